#include "core/shared_state.h"

SharedState& module1() {
    static SharedState state;
    return state;
}

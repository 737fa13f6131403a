#include "semicircle/bench_routes.h"

BenchRoutes& benchRoutes() {
    static BenchRoutes routes;
    return routes;
}

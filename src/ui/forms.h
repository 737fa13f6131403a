#pragma once
#include <QObject>
#include <QWidget>

#include <memory>
#include <typeindex>
#include <unordered_map>
#include <vector>

// Every screen exists once: it is created the first time any code asks for
// it and lives until the program ends, hidden and shown again with its state.
class Forms {
public:
    static Forms& instance();

    template <class Screen>
    Screen& get() {
        const std::type_index key(typeid(Screen));
        if (auto it = screens_.find(key); it != screens_.end()) return static_cast<Screen&>(*it->second);
        auto screen = std::make_unique<Screen>();
        Screen& ref = *screen;
        order_.push_back(key);
        screens_.emplace(key, std::move(screen));
        return ref;
    }

    template <class Screen>
    bool exists() const {
        return screens_.count(std::type_index(typeid(Screen))) != 0;
    }

    // The state object a subsystem's screens share (its values held once,
    // with change signals), created on first use like a screen. It outlives
    // every screen, which may still read it while they are destroyed.
    template <class State>
    State& state() {
        const std::type_index key(typeid(State));
        if (auto it = states_.find(key); it != states_.end()) return static_cast<State&>(*it->second);
        auto made = std::make_unique<State>();
        State& ref = *made;
        states_.emplace(key, std::move(made));
        return ref;
    }

    // Hides every screen but one (the main menu, for a return to the start).
    void hideAllBut(const QWidget& keep);

    // Destroys every screen, newest first, then every state object: at the
    // end of the program, and between tests that want fresh screens.
    void destroyAll();

private:
    std::unordered_map<std::type_index, std::unique_ptr<QWidget>> screens_;
    std::unordered_map<std::type_index, std::unique_ptr<QObject>> states_;
    std::vector<std::type_index> order_;
};

template <class Screen>
Screen& form() {
    return Forms::instance().get<Screen>();
}

template <class State>
State& sharedState() {
    return Forms::instance().state<State>();
}

// Hides a screen if it was ever created (a screen never opened need not be
// created just to be hidden).
template <class Screen>
void hideIfCreated() {
    if (Forms::instance().exists<Screen>()) form<Screen>().hide();
}

// Shows a screen modeless, wholly on the screen, and brings it to the front.
void showScreen(QWidget& screen);

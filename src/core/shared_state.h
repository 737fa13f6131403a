#pragma once

// Values shared by the screens for the program's whole life: the wave
// screens' speed ratio and the index fitted to the pupil's data.
struct SharedState {
    double pi = 0.0;                 // set by Main to π
    double speedRatio = 1.0;         // c of the wave screens
};

// The one instance.
SharedState& module1();

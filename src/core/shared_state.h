#pragma once
#include <cstdint>

// Values shared by the screens for the program's whole life: the block and
// ray set-up of the semicircle experiment, its last measurement and the
// index fitted to the pupil's data.
struct SharedState {
    double pi = 0.0;                 // set by Main to π
    double semicircleRadius = 0.0;   // radius of the block, bench units
    double incidenceAngle = 0.0;     // degrees
    double angleWithY = 0.0;         // tilt of the flat face from the Y axis
    double indexN = 1.5;             // refractive index of the block
    double xc = 0.0;                 // centre of the flat face
    double yc = 0.0;
    double rayHeight = 0.0;          // the ray's y at x = 0
    std::int16_t semicircleDirection = 0;  // 0 none yet, 1 "TO THE LEFT", 2 "TO THE RIGHT"
    double measuredIndex = 0.0;      // result of the last ray trace
    double exitRayAngle = 0.0;       // radians from the horizontal
    double dataIndex = 0.0;          // index fitted by the data analysis
};

// The one instance.
SharedState& module1();

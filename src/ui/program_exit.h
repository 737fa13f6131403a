#pragma once
#include <functional>

// Ending the program goes through here, so that a test can see that "END"
// was pressed without the test run itself ending.
using ProgramEnder = std::function<void(int status)>;

// Ends the program at once with the status.
void endProgram(int status = 0);
// Replaces what endProgram does (tests); returns the previous handler.
ProgramEnder setProgramEnder(ProgramEnder ender);

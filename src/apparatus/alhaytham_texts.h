#pragma once
#include <QString>

#include <utility>
#include <vector>

class Canvas;

// Al Haytham's eight rules as they are printed, each with the height (in the
// graph screen's degrees, y up) at which its line stands.
const std::vector<std::pair<double, QString>>& alHaythamRuleLines();

// Prints the rules on the canvas, rule (5) in red and rule (6) in magenta
// while the check finds them violated, everything else in black.
void PrintAlHaythamRules(Canvas& canvas, bool rule5Violated, bool rule6Violated);

// Al Haytham's work explained for the notes screen: Greek, then English.
QString alHaythamExplanation();

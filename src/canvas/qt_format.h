#pragma once
#include <QString>

#include "core/number_format.h"

// formatNumber for captions and labels.
inline QString fmt(double value, const char* pattern) { return QString::fromStdString(formatNumber(value, pattern)); }

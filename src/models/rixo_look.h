#pragma once
// Colours of the wave screen, shared by the files that draw its still
// pictures and its moving fronts.
#include <QColor>

namespace rixo_look {

inline const QColor kUpperMedium(255, 255, 200);
inline const QColor kLowerMedium(255, 255, 255);
inline const QColor kIncident(200, 100, 0);
inline const QColor kReflected(255, 0, 0);
inline const QColor kRefracted(0, 0, 255);
inline const QColor kNormal(120, 120, 120);
inline const QColor kBrewster(0, 128, 0);

}  // namespace rixo_look

#pragma once
// Every colour the program draws or paints with, by what it shows, so that a
// colour is changed in one place and two screens that show the same thing
// show it alike. (Qt::black and Qt::white, where code already says so, are the
// same black and white as here.)
#include <QColor>

namespace palette {

inline constexpr QColor black{0, 0, 0};
inline constexpr QColor white{255, 255, 255};

// The pure pens the drawings use where the colour itself is the message
// ("the red curve"), as in the classic sixteen-colour set.
inline constexpr QColor red{255, 0, 0};
inline constexpr QColor green{0, 255, 0};
inline constexpr QColor blue{0, 0, 255};
inline constexpr QColor cyan{0, 255, 255};
inline constexpr QColor magenta{255, 0, 255};
inline constexpr QColor yellow{255, 255, 0};

// Graph paper: grids and ticks, the line of equal sines, residual bars.
namespace graph {
inline constexpr QColor grid = blue;
inline constexpr QColor ticks = blue;
inline constexpr QColor equalSines{0, 160, 0};  // sin r = sin i, n = 1
inline constexpr QColor residual{220, 0, 0};
inline constexpr QColor axis = black;
}  // namespace graph

// The semicircle bench.
namespace bench {
inline constexpr QColor blockFill{205, 235, 255};
inline constexpr QColor ray{0, 200, 0};          // incident and emerging rays
inline constexpr QColor insideRay{0, 200, 100};  // inside the block and reflected
inline constexpr QColor givenIncident = blue;    // the ray of a typed incidence angle
inline constexpr QColor givenOther = green;
inline constexpr QColor hint{170, 0, 0};
inline constexpr QColor expected{230, 0, 0};
inline constexpr QColor aimMark = red;  // where the mouse aimed the ray
inline constexpr QColor noteFrame{160, 160, 160};
// The lab aids: dashed normals, the angles beside the rays, the protractor.
inline constexpr QColor normal{90, 90, 90};
inline constexpr QColor readoutText = black;
inline constexpr QColor readoutFrame{0, 120, 60};  // the box's edge and its leader line
inline constexpr QColor readoutPaper = white;
inline constexpr QColor totalReflectionText{170, 0, 0};
inline constexpr QColor protractorInk{120, 60, 0};
}  // namespace bench

// Laws laid over data: each law's curve and the ground of its label.
namespace law {
inline constexpr QColor kepler = red;
inline constexpr QColor keplerGround = yellow;
inline constexpr QColor snell{155, 39, 110};
inline constexpr QColor snellGround = cyan;
inline constexpr QColor fixedLine{165, 100, 80};  // r = 2/3 i and the like
inline constexpr QColor fixedLabel{165, 155, 80};
// The fixed lines' labels stand on their line's colour darkened, against
// which their pale olive type reads clearly over grid lines and other laws.
inline constexpr QColor fixedGround{70, 40, 30};
// The historical tables as they are plotted together.
inline constexpr QColor ptolemyTable{100, 0, 255};
inline constexpr QColor alHaythamTable{100, 150, 0};
inline constexpr QColor newtonTable = red;
inline constexpr QColor legendFrame{120, 120, 120};
}  // namespace law

// The data screen and its files.
namespace data {
inline constexpr QColor typedRow{255, 205, 205};
inline constexpr QColor fileSetup{0, 200, 100};
inline constexpr QColor fileAngles{0, 200, 0};
inline constexpr QColor reportRule{150, 150, 150};
}  // namespace data

// Reflected and refracted waves.
namespace waves {
inline constexpr QColor upperMedium{255, 255, 200};
inline constexpr QColor lowerMedium = white;
inline constexpr QColor incident{200, 100, 0};
inline constexpr QColor reflected = red;
inline constexpr QColor refracted = blue;
inline constexpr QColor normal{120, 120, 120};
inline constexpr QColor brewster{0, 128, 0};
}  // namespace waves

// Corpuscles and least time.
namespace corpuscles {
inline constexpr QColor track = blue;
inline constexpr QColor layerFace{90, 90, 90};
inline constexpr QColor secondMedium{200, 150, 90};
inline constexpr QColor corpuscle{220, 0, 0};
inline constexpr QColor heroPath = red;
inline constexpr QColor fermatPath = green;
inline constexpr QColor fermatFirst = magenta;
inline constexpr QColor fermatSecond = blue;
inline constexpr QColor fermatThird = green;
}  // namespace corpuscles

// Ptolemy's disc and its fitting.
namespace ptolemy {
inline constexpr QColor water = cyan;
inline constexpr QColor sightLines = red;
inline constexpr QColor targetBand = magenta;
inline constexpr QColor targetOutline{5, 0, 5};
inline constexpr QColor bodyBand{55, 155, 0};
inline constexpr QColor centralOutline{155, 0, 155};
inline constexpr QColor airOutline{5, 0, 0};
inline constexpr QColor lineOfSight = green;
inline constexpr QColor marks = blue;
inline constexpr QColor hiddenWater{200, 200, 0};
inline constexpr QColor hiddenSight = red;
inline constexpr QColor snellCurve = red;
inline constexpr QColor analogyCurve{0, 150, 0};
inline constexpr QColor ptolemyCurve{150, 0, 150};
}  // namespace ptolemy

// Al Haytham's instrument and his rules.
namespace alhaytham {
inline constexpr QColor beam = red;
inline constexpr QColor deepWater{0, 0, 200};
inline constexpr QColor surfaceWater{0, 5, 200};
inline constexpr QColor water{0, 100, 200};
inline constexpr QColor ruler{200, 200, 0};
inline constexpr QColor ruleFiveBroken = red;
inline constexpr QColor ruleSixBroken = magenta;
}  // namespace alhaytham

// The figures of the history notes.
namespace notes {
inline constexpr QColor ray{220, 30, 30};
inline constexpr QColor secondPath{40, 40, 160};
inline constexpr QColor water{205, 230, 250};
inline constexpr QColor layer{255, 240, 170};
inline constexpr QColor construction{110, 110, 110};
inline constexpr QColor angleArc{150, 90, 30};
}  // namespace notes

// The main menu's window and its small picture of a refracted ray.
namespace menu {
inline constexpr QColor window{224, 236, 248};
inline constexpr QColor water = notes::water;
inline constexpr QColor surface{60, 90, 140};
inline constexpr QColor normal{90, 90, 90};
inline constexpr QColor ray = notes::ray;
inline constexpr QColor caption{30, 30, 30};
}  // namespace menu

// Worksheets: the ruled lines pupils write on, the line over the title.
namespace worksheet {
inline constexpr QColor rule{160, 160, 160};
inline constexpr QColor heading{128, 128, 128};  // the program's name over the title
}  // namespace worksheet

// The history pages.
namespace pages {
inline constexpr QColor text{20, 20, 20};
inline constexpr QColor tableBorder{0x55, 0x55, 0x55};
inline constexpr QColor tableHead{0xe8, 0xee, 0xf6};
}  // namespace pages

}  // namespace palette

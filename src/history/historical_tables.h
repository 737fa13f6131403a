#pragma once
#include <string>
#include <vector>

namespace history {

// The eight historical tables of measured angle pairs, by the names of
// their menu items.
enum class TableId { Ptolemy, ptolemy2, Alhazen, Alhazen2, Newt, newt2, Vitello_Glass, Vitello_water };

// Whose measurements a table holds: it decides the colour and the label of
// the plotted points. Witelo's tables are plotted in black, like the
// pupil's own.
enum class Observer { Ptolemy, AlHaytham, Newton, Witelo };

// One table with the texts that go with it. Angles in degrees, incidence
// first; the odd historical figures are kept as they were recorded.
struct HistoricalTable {
    TableId id;
    std::string itemName;     // the menu item's name
    std::string menuCaption;  // the menu item's caption
    Observer observer;
    std::vector<double> incidence;
    std::vector<double> refraction;
    std::string incidenceHeading;   // first line of the incidence list
    std::string refractionHeading;  // first line of the refraction list
    std::string caption;            // the name shown under the lists
    std::string increfTitle;        // title of the angle graph
    std::string analysisTitle;      // title of the sine graph
};

// All eight, in the order Ptolemy glass, water; Al Haytham glass, water;
// Newton glass, water; Witelo glass to air, water to air.
const std::vector<HistoricalTable>& historicalTables();
const HistoricalTable& historicalTable(TableId id);

// Witelo's tables describe light leaving the denser medium for air.
inline bool leavesDenserMedium(TableId id) { return id == TableId::Vitello_Glass || id == TableId::Vitello_water; }

// The ordinary shortest decimal form of a number, as a list shows it:
// 7.54, 13.5, 40.1833, 0 (no fixed number of decimals, no exponent for
// the magnitudes of angles).
std::string shortestDecimal(double value);

}  // namespace history

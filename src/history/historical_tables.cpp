#include "history/historical_tables.h"

#include <charconv>
#include <cmath>

namespace history {

namespace {

// Al Haytham's glass table repeats Ptolemy's figure for figure, as his own
// did: both items must give the same picture and index.
std::vector<HistoricalTable> ptolemyAndAlHaythamTables() {
    return {{TableId::Ptolemy,
             "Ptolemy",
             "PTOLEMY: GLASS",
             Observer::Ptolemy,
             {10, 20, 30, 40, 50, 60, 70, 80},
             {7, 13.5, 19.5, 25, 30, 34.5, 38.5, 42},
             "INCIDENCE Πρόσπτωση ",
             "REFRACTION Διάθλαση",
             "PTOLEMY'S DATA FOR GLASS Δεδομένα Πτολεμαίου Γυαλιού",
             "REFRACTION ANGLE VX INCIDENCE ANGLE Γωνία διάθλασης vs γωνία πρόσπτωσης",
             "SIN(REFRACTION) VS SIN(INCIDENCE)"},
            {TableId::ptolemy2,
             "ptolemy2",
             "PTOLEMY WATER",
             Observer::Ptolemy,
             {10, 20, 30, 40, 50, 60, 70, 80},
             {8, 15.5, 22.5, 28, 35, 40.5, 45, 50},
             "INCIDENCE Πρόσπτωση",
             "REFRACTION Διάθλαση",
             "PTOLEMY'S DATA FOR WATER Δεδομένα Πτολεμαίου νερού",
             "REFRACTION ANGLE VS INCIDENCE ANGLE ",
             "SIN(REFRACTION) VS SIN(INCIDENCE)"},
            {TableId::Alhazen,
             "Alhazen",
             "Al Haytham: GLASS",
             Observer::AlHaytham,
             {10, 20, 30, 40, 50, 60, 70, 80},
             {7, 13.5, 19.5, 25, 30, 34.5, 38.5, 42},
             " incidence Πρόσπτωση",
             "REFRACTION Διάθλαση",
             "Al Haytham's DATA: GLASS Γυαλιού",
             "REFRACTION ANGLE VS INCIDENCE ANGLE",
             "SIN(REFRACTION) VS SIN(INCIDENCE)"},
            {TableId::Alhazen2,
             "Alhazen2",
             "Al Haytham:  WATER",
             Observer::AlHaytham,
             {10, 20, 30, 40, 50, 60, 70, 80},
             {7.54, 15.5, 22.5, 29, 35, 40.5, 45.5, 50},
             "INCIDENCE Πρόσπτωση ",
             "REFRACTION Διάθλαση",
             "Al Haytham's DATA: water νερό",
             "REFRACTION ANGLE VS INCIDENCE ",
             "SIN(REFRACTION) VS SIN(INCIDENCE)"}};
}

std::vector<HistoricalTable> newtonAndWiteloTables() {
    return {{TableId::Newt,
             "Newt",
             "Newton: GLASS",
             Observer::Newton,
             {10, 20, 30, 40, 50, 60, 65, 70, 75, 80, 85, 90},
             {6.433, 12.75, 18.81667, 24.5, 29.61667, 33.966, 35.7833, 37.3166, 38.55, 39.45, 40, 40.1833},
             " INCIDENCE Πρόσπτωσης",
             "REFRACTION Διάθλαση",
             "Newton's DATA: GLASS Γυαλί",
             "REFRACTION ANGLE VS INCIDENCE ANGLE",
             "SIN(REFRACTION) VS SIN(INCIDENCE)"},
            {TableId::newt2,
             "newt2",
             "Newton: WATER",
             Observer::Newton,
             {0, 15, 30, 45, 60, 75, 90},
             {0, 11.1833, 22.01667, 32.033, 40.5, 46.4166, 48.5833},
             "INCIDENCE Πρόσπτωση ",
             "REFRACTION Διάθλαση",
             "Newton's DATA: νερό",
             "REFRACTION ANGLE VS INCIDENCE ANGLE",
             "SIN(REFRACTION) VS SIN(INCIDENCE)"},
            {TableId::Vitello_Glass,
             "Vitello_Glass",
             "Witelo: GLASS TO AIR",
             Observer::Witelo,
             {10, 20, 30, 40, 50, 60, 70, 80},
             {13, 26, 40.5, 55, 70, 85.83, 101.5, 118},
             "INCIDENCE Πρόσπτωση ",
             "REFRACTION Διάθλαση",
             "Witelo data: From Glass to air γυαλί σε αέρα",
             "REFRACTION ANGLE VS INCIDENCE ANGLE",
             "SIN(REFRACTION) VS SIN(INCIDENCE)"},
            {TableId::Vitello_water,
             "Vitello_water",
             "Witelo:FROM WATER TO AIR",
             Observer::Witelo,
             {10, 20, 30, 40, 50, 60, 70, 80},
             {12.25, 24.5, 37.5, 51, 65, 79.5, 94.5, 110},
             "INCIDENCE Πρόσπτωση ",
             "REFRACTION Διάθλαση",
             "Witelo Data: From Water  to  Airνερό σε αέρα ",
             "REFRACTION ANGLE VS INCIDENCE ANGLE",
             "SIN(REFRACTION) VS SIN(INCIDENCE)"}};
}

}  // namespace

const std::vector<HistoricalTable>& historicalTables() {
    static const std::vector<HistoricalTable> all = [] {
        std::vector<HistoricalTable> joined;
        for (auto part : {ptolemyAndAlHaythamTables(), newtonAndWiteloTables()})
            joined.insert(joined.end(), part.begin(), part.end());
        return joined;
    }();
    return all;
}

const HistoricalTable& historicalTable(TableId id) { return historicalTables().at(static_cast<std::size_t>(id)); }

std::string shortestDecimal(double value) {
    if (!std::isfinite(value)) return value != value ? "NaN" : (value > 0 ? "Infinity" : "-Infinity");
    if (value == 0.0) return "0";  // also for -0
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general);
    return std::string(buffer, result.ptr);
}

}  // namespace history

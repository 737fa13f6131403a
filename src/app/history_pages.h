#pragma once
#include <optional>
#include <span>
#include <string>
#include <vector>

// The texts of the two history pages, kept as plain data (UTF-8) so that
// the screen only decides how they look. A page is a sequence of blocks in
// reading order; a Table block marks where Ptolemy's table stands.
namespace history {

enum class BlockKind {
    Title,      // the page's heading
    Section,    // a section heading; starts a new section
    Paragraph,  // running text
    Formula,    // a relation written on a line of its own
    Table,      // Ptolemy's air-to-water table (its text is empty)
};

struct PageBlock {
    BlockKind kind;
    std::string text;
};

struct HistoryPage {
    std::vector<PageBlock> blocks;
};

const HistoryPage& firstPage();
const HistoryPage& secondPage();

// One row of a table of differences. The first difference is this row's
// refraction angle minus the previous row's; the second difference is how
// much the first difference shrank since the previous row (previous first
// difference minus this one), which is how the old tables state it: a
// constant second difference means each step shrinks by the same amount.
struct DifferenceRow {
    double incidence = 0.0;
    double refraction = 0.0;
    std::optional<double> firstDifference;
    std::optional<double> secondDifference;
};

// Rows for the angle pairs (incidence[k], refraction[k]); if the two lists
// differ in length, the extra values of the longer one are ignored.
std::vector<DifferenceRow> differenceTable(std::span<const double> incidence, std::span<const double> refraction);

// Ptolemy's results for refraction from air into water, in degrees.
std::span<const double> ptolemyWaterIncidence();
std::span<const double> ptolemyWaterRefraction();

// The column headings of the table, each of two lines set one above the
// other: incidence, refraction, first differences, second differences.
struct ColumnHeading {
    std::string top;
    std::string bottom;
};
const std::vector<ColumnHeading>& differenceTableHeadings();

// An angle as the Greek text writes it: whole degrees without decimals,
// otherwise one decimal with a decimal comma, followed by "°" ("15,5°").
std::string formatDegrees(double degrees);

}  // namespace history

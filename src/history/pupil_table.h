#pragma once
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "history/data_pairs.h"

namespace history {

// The pupil's table of angle pairs as a CSV file: a header row, then one
// row per pair, "incidence,refraction" in degrees, UTF-8. Spreadsheets set
// to Greek write a semicolon between the cells and a decimal comma
// ("19,5;13"): that form is read too.
// Fourteen rows fit the data screen's grid; a longer table (a whole class's
// bench measurements) is shown in its lists, up to this many rows.
inline constexpr int kLargestTableRows = 1000;
// A table of 1000 rows is some 15 kB; anything much larger is not one, and
// is refused before it is read whole.
inline constexpr std::size_t kLargestTableFile = 64 * 1024;

struct TableFileError {
    int line = 0;  // from 1; 0 for the file as a whole
    std::string english;
    std::string greek;
};

struct TableFileReading {
    std::vector<TypedRow> rows;  // as they will stand in the grid
    std::optional<TableFileError> error;
};

// Reads the text of a table file. Every refusal names the line: a blank
// line between rows, a wrong number of cells, a cell that is not an angle
// between −180 and 180, more than 1000 rows, text that is not UTF-8 or holds
// control characters. A cell quoted in a refusal is cut to 40 characters
// with invisible and direction-changing characters escaped. A first row whose first cell is not a number is the
// header. A row may leave the refraction empty, as the grid may.
TableFileReading parseTableFile(std::string_view text);

// The CSV text of the rows (header first, numbers in their shortest form,
// '.' as the decimal point); rows with an empty incidence are left out.
std::string writeTableFile(const std::vector<TypedRow>& rows);

}  // namespace history

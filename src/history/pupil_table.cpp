#include "history/pupil_table.h"

#include <algorithm>
#include <cctype>
#include <cmath>

#include "core/message_text.h"
#include "core/number_input.h"
#include "history/historical_tables.h"

namespace history {

namespace {

std::string trim(std::string_view s) {
    auto blank = [](char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; };
    while (!s.empty() && blank(s.front())) s.remove_prefix(1);
    while (!s.empty() && blank(s.back())) s.remove_suffix(1);
    // Spreadsheets may quote every cell.
    if (s.size() >= 2 && s.front() == '"' && s.back() == '"') s = s.substr(1, s.size() - 2);
    return std::string(s);
}

std::vector<std::string> split(std::string_view line, char separator) {
    std::vector<std::string> cells;
    std::size_t start = 0;
    for (std::size_t i = 0; i <= line.size(); ++i) {
        if (i == line.size() || line[i] == separator) {
            cells.push_back(trim(line.substr(start, i - start)));
            start = i + 1;
        }
    }
    return cells;
}

TableFileError errorAt(int line, std::string english, std::string greek) {
    return TableFileError{line, std::move(english), std::move(greek)};
}

// The cell as the grid shows it: the number in its shortest form.
std::optional<std::string> angleCell(const std::string& cell, bool decimalComma) {
    std::string text = cell;
    if (decimalComma) std::replace(text.begin(), text.end(), ',', '.');
    const auto value = parsePointNumber(text);
    if (!value || std::fabs(*value) > 180.0) return std::nullopt;
    return shortestDecimal(*value);
}

// The lines, without their ends; blank lines at the very end are harmless
// (elsewhere they are refused) and go.
std::vector<std::string_view> tableLines(std::string_view text) {
    std::vector<std::string_view> lines;
    std::size_t start = 0;
    for (std::size_t i = 0; i <= text.size(); ++i) {
        if (i == text.size() || text[i] == '\n') {
            std::string_view line = text.substr(start, i - start);
            if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
            lines.push_back(line);
            start = i + 1;
        }
    }
    while (!lines.empty() && trim(lines.back()).empty()) lines.pop_back();
    return lines;
}

}  // namespace

TableFileReading parseTableFile(std::string_view text) {
    TableFileReading reading;
    auto fail = [&reading](TableFileError e) {
        reading.rows.clear();
        reading.error = std::move(e);
        return reading;
    };
    if (text.size() > kLargestTableFile)
        return fail(errorAt(0, "The file is far too large for a table of angle pairs.",
                            "Το αρχείο είναι πολύ μεγάλο για πίνακα ζευγών γωνιών."));
    if (text.size() >= 3 && text.substr(0, 3) == "\xEF\xBB\xBF") text.remove_prefix(3);  // byte-order mark

    const std::vector<std::string_view> lines = tableLines(text);
    if (lines.empty()) return fail(errorAt(0, "The file is empty.", "Το αρχείο είναι κενό."));

    for (std::size_t k = 0; k < lines.size(); ++k) {
        const int lineNo = static_cast<int>(k) + 1;
        const std::string_view line = lines[k];
        const bool control = std::any_of(line.begin(), line.end(), [](char c) {
            const auto u = static_cast<unsigned char>(c);
            return u < 0x20 && c != '\t';
        });
        if (control || !isValidUtf8(line))
            return fail(errorAt(lineNo, "This line is not text: is the file a table saved as CSV?",
                                "Η γραμμή δεν είναι κείμενο: είναι το αρχείο πίνακας αποθηκευμένος ως CSV;"));
        if (trim(line).empty())
            return fail(errorAt(lineNo, "This line is blank; every row must hold an incidence and a refraction angle.",
                                "Η γραμμή είναι κενή· κάθε γραμμή πρέπει να έχει γωνία πρόσπτωσης και διάθλασης."));
        const bool semicolons = line.find(';') != std::string_view::npos;
        const std::vector<std::string> cells = split(line, semicolons ? ';' : ',');
        if (k == 0 && !cells.empty() && !angleCell(cells[0], semicolons)) {
            continue;  // the header row
        }
        if (cells.size() != 2)
            return fail(errorAt(
                lineNo,
                "This row must have two cells, incidence and refraction, but has " + std::to_string(cells.size()) + ".",
                "Η γραμμή πρέπει να έχει δύο κελιά, πρόσπτωση και διάθλαση, αλλά έχει " + std::to_string(cells.size()) +
                    "."));
        const auto incidence = angleCell(cells[0], semicolons);
        const std::optional<std::string> refraction =
            cells[1].empty() ? std::optional<std::string>("") : angleCell(cells[1], semicolons);
        if (!incidence || !refraction) {
            const std::string cell = quotedForMessage(!incidence ? cells[0] : cells[1]);
            return fail(errorAt(lineNo, "\"" + cell + "\" is not an angle in degrees between -180 and 180.",
                                "Το \"" + cell + "\" δεν είναι γωνία σε μοίρες μεταξύ -180 και 180."));
        }
        if (static_cast<int>(reading.rows.size()) == kLargestTableRows)
            return fail(errorAt(lineNo, "The table has more than 1000 rows.",
                                "Ο πίνακας έχει περισσότερες από 1000 γραμμές."));
        reading.rows.push_back({*incidence, *refraction});
    }
    if (reading.rows.empty())
        return fail(errorAt(0, "The file holds no angle pairs.", "Το αρχείο δεν έχει ζεύγη γωνιών."));
    return reading;
}

std::string writeTableFile(const std::vector<TypedRow>& rows) {
    std::string text = "incidence,refraction\n";
    for (const TypedRow& row : rows) {
        if (trim(row.incidence).empty()) continue;
        auto cell = [](const std::string& typed) {
            const auto value = parseTypedNumber(typed);
            return value ? shortestDecimal(*value) : std::string();
        };
        text += cell(row.incidence) + "," + cell(row.refraction) + "\n";
    }
    return text;
}

}  // namespace history

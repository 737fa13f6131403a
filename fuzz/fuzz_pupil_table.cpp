// The pupil's CSV table: either a refusal that names a line in both
// languages in a message fit to show (short, valid UTF-8, nothing of the
// file that could turn the text round or break it), or 1 to 14 rows of angles within ±180° that the grid reads
// without complaint and that read back the same once saved.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/message_text.h"
#include "core/number_input.h"
#include "fuzz_check.h"
#include "history/data_pairs.h"
#include "history/pupil_table.h"

namespace {

bool angleText(const std::string& text) {
    const auto value = parseTypedNumber(text);
    return value && std::isfinite(*value) && std::fabs(*value) <= 180.0;
}

// Short enough for a message box, and free of the characters that would
// reverse or break the text around a quoted cell.
bool fitToShow(const std::string& message) {
    if (message.size() > 500 || !isValidUtf8(message)) return false;
    for (const std::string_view bad :
         {"\xE2\x80\xAA", "\xE2\x80\xAB", "\xE2\x80\xAC", "\xE2\x80\xAD", "\xE2\x80\xAE", "\xE2\x81\xA6",
          "\xE2\x81\xA7", "\xE2\x81\xA8", "\xE2\x81\xA9", "\xE2\x80\x8E", "\xE2\x80\x8F", "\xD8\x9C"})
        if (message.find(bad) != std::string::npos) return false;
    return std::none_of(message.begin(), message.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; });
}

bool sameRows(const std::vector<history::TypedRow>& a, const std::vector<history::TypedRow>& b) {
    if (a.size() != b.size()) return false;
    for (std::size_t k = 0; k < a.size(); ++k)
        if (a[k].incidence != b[k].incidence || a[k].refraction != b[k].refraction) return false;
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const history::TableFileReading reading = history::parseTableFile(text);
    if (reading.error) {
        const history::TableFileError& e = *reading.error;
        FUZZ_REQUIRE(reading.rows.empty());
        FUZZ_REQUIRE(!e.english.empty() && !e.greek.empty());
        FUZZ_REQUIRE(fitToShow(e.english) && fitToShow(e.greek));
        const auto lines = static_cast<int>(std::count(text.begin(), text.end(), '\n')) + 1;
        FUZZ_REQUIRE(e.line >= 0 && e.line <= lines);
        return 0;
    }
    FUZZ_REQUIRE(!reading.rows.empty() && static_cast<int>(reading.rows.size()) <= history::kLargestTableRows);
    for (const history::TypedRow& row : reading.rows) {
        FUZZ_REQUIRE(angleText(row.incidence));
        FUZZ_REQUIRE(row.refraction.empty() || angleText(row.refraction));
    }
    // What the grid or the lists then show is read by the analysis without complaint.
    const history::TypedReading typed = history::readTypedPairs(reading.rows);
    FUZZ_REQUIRE(!typed.error);
    // Saved and opened again, the table is the same.
    const std::string saved = history::writeTableFile(reading.rows);
    const history::TableFileReading again = history::parseTableFile(saved);
    FUZZ_REQUIRE(!again.error && sameRows(again.rows, reading.rows));
    return 0;
}

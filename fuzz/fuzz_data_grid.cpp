// The data screen's grid of typed pairs, one line per row, the two cells
// separated by a tab: either the reading names the offending cell, or every
// pair is a finite angle within ±180° and the sine fit stays finite.
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/number_input.h"
#include "fuzz_check.h"
#include "history/data_pairs.h"

namespace {

std::vector<history::TypedRow> rowsOf(std::string_view text) {
    std::vector<history::TypedRow> rows;
    while (!text.empty() && rows.size() < 20) {
        const auto end = text.find('\n');
        const std::string_view line = text.substr(0, end);
        const auto tab = line.find('\t');
        rows.push_back({std::string(line.substr(0, tab)),
                        tab == std::string_view::npos ? std::string() : std::string(line.substr(tab + 1))});
        if (end == std::string_view::npos) break;
        text.remove_prefix(end + 1);
    }
    return rows;
}

bool finiteWithin(double v, double limit) { return std::isfinite(v) && std::fabs(v) <= limit; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto rows = rowsOf(std::string_view(reinterpret_cast<const char*>(data), size));
    const history::TypedReading reading = history::readTypedPairs(rows);
    if (reading.error) {
        const history::TypedRowError& e = *reading.error;
        FUZZ_REQUIRE(reading.pairs.empty());
        FUZZ_REQUIRE(e.row >= 1 && e.row <= static_cast<int>(rows.size()));
        const history::TypedRow& row = rows[static_cast<std::size_t>(e.row - 1)];
        FUZZ_REQUIRE(e.text == (e.inRefraction ? row.refraction : row.incidence));
        const auto value = parseTypedNumber(e.text);
        if (e.kind == history::TypedRowError::Kind::NotANumber)
            FUZZ_REQUIRE(!value);
        else
            FUZZ_REQUIRE(value && std::fabs(*value) > 180.0);
        return 0;
    }
    FUZZ_REQUIRE(reading.pairs.size() <= rows.size());
    for (const history::AnglePair& p : reading.pairs) {
        FUZZ_REQUIRE(finiteWithin(static_cast<double>(p.incidence), 180.0));
        FUZZ_REQUIRE(finiteWithin(static_cast<double>(p.refraction), 180.0));
    }
    for (bool leavesDenser : {false, true}) {
        const history::SineFit fit = history::fitSines(reading.pairs, leavesDenser);
        FUZZ_REQUIRE(fit.sinIncidence.size() == reading.pairs.size());
        for (std::size_t k = 0; k < fit.sinIncidence.size(); ++k)
            FUZZ_REQUIRE(finiteWithin(fit.sinIncidence[k], 1.0) && finiteWithin(fit.sinRefraction[k], 1.0));
        FUZZ_REQUIRE(fit.fittedPairs >= 0 && fit.fittedPairs <= static_cast<int>(reading.pairs.size()));
        if (fit.line) {
            FUZZ_REQUIRE(std::isfinite(static_cast<double>(fit.line->slope)));
            FUZZ_REQUIRE(std::isfinite(static_cast<double>(fit.line->intercept)));
        }
        if (fit.index) FUZZ_REQUIRE(fit.line && std::isfinite(*fit.index));
    }
    return 0;
}

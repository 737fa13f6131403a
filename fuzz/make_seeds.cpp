// Writes the seed corpus: real files of every kind the readers meet, made by
// the program's own writers, plus the pupil's usual mistakes.
// Usage: fuzz_make_seeds <corpus folder>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "history/historical_tables.h"
#include "history/pupil_table.h"
#include "semicircle/measurement_file.h"

namespace fs = std::filesystem;

namespace {

void put(const fs::path& folder, const std::string& name, const std::string& bytes) {
    fs::create_directories(folder);
    std::ofstream(folder / name, std::ios::binary) << bytes;
}

std::string slurp(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: fuzz_make_seeds <corpus folder>\n";
        return 2;
    }
    const fs::path corpus = argv[1];

    // A measurement file as the bench writes it: a series over the default
    // block, then a shorter series written over it.
    const fs::path work = fs::temp_directory_path() / "fuzz-seeds-fylaxi";
    fs::remove(work);
    Block block;
    block.direction = 1;
    if (!writeMeasurementFile(work, runMeasurementSeries(block, 20.0)).ok) return 1;
    const std::string full = slurp(work);
    block.tilt = 0.3;
    if (!writeMeasurementFile(work, runMeasurementSeries(block, -35.0)).ok) return 1;
    const std::string overwritten = slurp(work);
    fs::remove(work);
    const fs::path file = corpus / "fuzz_measurement_file";
    put(file, "series", full);
    put(file, "series_overwritten", overwritten);
    put(file, "position_1", "1\n" + full);
    put(file, "position_last", std::to_string((full.size() + 47) / 48) + "\n" + full);
    put(file, "position_comma", "1,5\n" + full);
    put(file, "position_huge", "1e999\n" + full.substr(0, 200));
    put(file, "short_record", "2\n" + full.substr(0, 47));
    put(file, "one_record", full.substr(0, 48));

    const fs::path number = corpus / "fuzz_typed_number";
    const std::vector<std::string> typed{
        "1.5",    " -12.25 ", "1,5", "1e999", "nan", "inf",    "0",   "-1",
        "+.5e-3", "abc",      "",    "0x1p3", "5.",  "1e-400", "--1", std::string(400, '9')};
    for (std::size_t k = 0; k < typed.size(); ++k) put(number, "typed_" + std::to_string(k), typed[k]);

    // The grid: a historical table as the pupil would type it, and a row
    // with a mistake.
    const fs::path grid = corpus / "fuzz_data_grid";
    for (const history::HistoricalTable& table : history::historicalTables()) {
        std::string rows;
        for (std::size_t k = 0; k < table.incidence.size() && k < table.refraction.size(); ++k)
            rows += history::shortestDecimal(table.incidence[k]) + "\t" +
                    history::shortestDecimal(table.refraction[k]) + "\n";
        put(grid, table.itemName, rows);
    }
    put(grid, "mistakes", "10\t6.5\n20\t1,5\n30\t\n400\t20\n");

    // Tables as the program saves them, and as a Greek spreadsheet does.
    const fs::path tables = corpus / "fuzz_pupil_table";
    for (const history::HistoricalTable& table : history::historicalTables()) {
        std::vector<history::TypedRow> rows;
        std::string greek = "πρόσπτωση;διάθλαση\r\n";
        for (std::size_t k = 0; k < table.incidence.size() && k < table.refraction.size(); ++k) {
            const std::string i = history::shortestDecimal(table.incidence[k]);
            const std::string r = history::shortestDecimal(table.refraction[k]);
            rows.push_back({i, r});
            std::string gi = i, gr = r;
            for (std::string* s : {&gi, &gr})
                for (char& c : *s)
                    if (c == '.') c = ',';
            greek += gi + ";" + gr + "\r\n";
        }
        put(tables, table.itemName + "_comma.csv", history::writeTableFile(rows));
        put(tables, table.itemName + "_greek.csv", greek);
    }
    put(tables, "quoted_bom.csv", "\xEF\xBB\xBF\"incidence\",\"refraction\"\n\"10\",\"6.5\"\n\"20\",\"\"\n");
    put(tables, "bad_cell.csv", "incidence,refraction\n10,6.5\n20,abc\n");
    return 0;
}

#include "benchmarks/support/Report.h"

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <sstream>
#include <vector>

namespace veilkeep::benchmark {
namespace {

constexpr int skipped = 77;

struct Row {
    std::optional<double> limit;
    std::string unit;
};

[[noreturn]] void stop(const std::string& why) {
    std::fprintf(stderr, "%s\n", why.c_str());
    std::exit(2);
}

std::string limitsPath() {
    const char* const other = std::getenv("VEILKEEP_BENCHMARK_LIMITS");
    return other ? other : VEILKEEP_BENCHMARK_LIMITS;
}

std::vector<std::string> cellsOf(const std::string& line) {
    std::istringstream text(line);
    std::vector<std::string> cells;
    for (std::string cell; std::getline(text, cell, '\t');)
        cells.push_back(cell);
    return cells;
}

// Whatever the locale, which Qt sets.
std::string textOf(double value) {
    char text[64];
    return {text, std::to_chars(text, text + sizeof text, value).ptr};
}

std::optional<double> limitOf(const std::string& cell) {
    if (cell == "-")
        return {};
    double limit = 0;
    const char* const end = cell.data() + cell.size();
    if (const auto [last, error] = std::from_chars(cell.data(), end, limit);
        error != std::errc() || last != end)
        stop(limitsPath() + ": not a limit: " + cell);
    return limit;
}

Row rowOf(const std::string& figure) {
    std::ifstream table(limitsPath());
    for (std::string line; std::getline(table, line);) {
        const auto cells = cellsOf(line);
        if (cells.size() == 6 && cells[0] == program_invocation_short_name && cells[1] == figure)
            return {limitOf(cells[3]), cells[4]};
    }
    stop(limitsPath() + " has no row for " + program_invocation_short_name + ": " + figure);
}

void append(const std::string& line) {
    const char* const path = std::getenv("VEILKEEP_BENCHMARK_RESULTS");
    if (!path)
        return;
    std::ofstream results(path, std::ios::app);
    if (!(results << line << std::endl))
        stop(std::string(path) + " cannot be written");
}

} // namespace

void Report::tell(const std::string& figure, double value, const std::string& detail) {
    const Row row = rowOf(figure);
    const bool isGood = !row.limit || value <= *row.limit;
    m_isGood = m_isGood && isGood;
    const std::string judged =
        row.limit ? "; at most " + textOf(*row.limit) + " wanted: " + (isGood ? "yes" : "NO") : "";
    std::printf("%-50s %10.3f %s  (%s%s)\n", figure.c_str(), value, row.unit.c_str(), detail.c_str(),
                judged.c_str());
    std::fflush(stdout);
    append("figure\t" + figure + '\t' + textOf(value) + '\t' + detail);
}

void Report::skip(const std::string& figure, const std::string& why) {
    std::printf("%-50s skipped: %s\n", figure.c_str(), why.c_str());
    append("skipped\t" + figure + '\t' + why);
}

int Report::skipAll(const std::string& why) {
    Report().skip("*", why);
    return skipped;
}

} // namespace veilkeep::benchmark

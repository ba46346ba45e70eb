#pragma once

#include <string>

namespace veilkeep::benchmark {

// What a benchmark found, each figure held against its row in benchmarks/limits.tsv. Printed for people; and
// where VEILKEEP_BENCHMARK_RESULTS names a file, appended to it for benchmarks/report, a line each with tabs:
// "figure NAME VALUE DETAIL" or "skipped NAME WHY", where the name "*" means all that is not told.
// VEILKEEP_BENCHMARK_LIMITS may name another table.
class Report {
public:
    // Ends the program where the figure has no row.
    void tell(const std::string& figure, double value, const std::string& detail);
    void skip(const std::string& figure, const std::string& why);

    int exitStatus() const { return m_isGood ? 0 : 1; } // 1: a figure was past its limit

    // Where the machine lacks what the benchmark needs. Answers the exit status for it.
    [[nodiscard]] static int skipAll(const std::string& why);

private:
    bool m_isGood = true;
};

} // namespace veilkeep::benchmark

#pragma once

namespace veilkeep {

// Asks once of each row, in their order, and tells the first and the last of neighbours that it holds for.
template <class Holds, class Tell>
void forEachRun(int rows, const Holds& holds, const Tell& tell) {
    for (int row = 0; row < rows; ++row) {
        const int first = row;
        while (row < rows && holds(row))
            ++row;
        if (row > first)
            tell(first, row - 1);
    }
}

} // namespace veilkeep

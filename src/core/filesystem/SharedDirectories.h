#pragma once

namespace veilkeep {

// Who may write to two open directories, of which one holds the other, by their modes and access lists. What
// cannot be looked at counts as open.

// Whether anybody may write to the inner one, or take away there what is not his, who may not in the outer.
bool isOpenToMoreThan(int inner, int outer);

// Whether root may bring out of the inner directory into the outer what lies there: only where those who put
// it in could have put it there themselves, and where it comes to nobody's sight from whom it was kept.
bool isSafeToEmptyAsRoot(int inner, int outer);

} // namespace veilkeep

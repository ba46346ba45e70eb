#pragma once

namespace veilkeep::crashHandler {

// From now on a crash (SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT) is written to the descriptor, as CrashNote
// reads it, before the process ends as it would have: with its core dump and by its signal. Signals that
// somebody else listens to are left to him. The descriptor stays the caller's. Main thread.
void install(int noteFile);

// Nothing more is written; the signals end the process as ever.
void remove();

// What the note is to call the reason, for the exception that is about to end the process. False: there will
// be no note. Any thread.
bool noteException(const char* typeName);

} // namespace veilkeep::crashHandler

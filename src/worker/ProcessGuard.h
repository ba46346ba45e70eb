#pragma once

namespace veilkeep {

// Makes sure that descriptors 0, 1 and 2 are taken, so that no file that is opened later gets the number that
// the answer is written to. What stands in for a closed one can be neither read nor written.
void occupyStandardStreams();

// SIGTERM, SIGHUP and SIGINT wait until the end of the process, and SIGPIPE and SIGXFSZ are ignored: a move
// that has begun is finished and told, and a file that cannot be written is an error like others.
void deferEndingSignals();
bool endingSignalArrived();

// From now on they call the handler instead, those that are ignored (nohup) aside.
void handleEndingSignals(void (*handler)(int));

} // namespace veilkeep

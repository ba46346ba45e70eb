#pragma once

namespace veilkeep {

// Tells a running application on the session bus, when there is one, that the in-progress folder holds new
// records. Without a bus, or with one that does not answer within two seconds, nothing happens: the records
// are read at the next start.
void postRereadTempFiles();

} // namespace veilkeep

#pragma once

#include <QString>

namespace veilkeep {

// An address of the scheme "veilkeep:", which any web page may have made up: logged, and nothing is done for
// it. Names of parameters that are not known are passed over; this version knows none.
void getUrl(const QString& url);

} // namespace veilkeep

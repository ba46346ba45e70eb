#pragma once

#include "core/base/UniqueFd.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <string>

namespace veilkeep::test {

// A socket that takes connections and never says a word.
inline UniqueFd listenAt(const std::string& path) {
    sockaddr_un place = {AF_UNIX, {}};
    path.copy(place.sun_path, sizeof place.sun_path - 1);
    UniqueFd socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (::bind(socket.get(), reinterpret_cast<const sockaddr*>(&place), sizeof place) != 0 ||
        ::listen(socket.get(), 1) != 0)
        socket.reset();
    return socket;
}

} // namespace veilkeep::test

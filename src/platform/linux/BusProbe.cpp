#include "platform/linux/BusProbe.h"

#include "core/base/SystemCall.h"
#include "core/base/UniqueFd.h"

#include <QByteArray>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

namespace veilkeep {
namespace {

// The value of a key in "unix:path=/run/bus,guid=…", its escapes undone.
std::optional<std::string> valueOf(std::string_view address, std::string_view key) {
    address = address.substr(0, address.find(';'));
    const std::size_t begin = address.find(key);
    if (!address.starts_with("unix:") || begin == std::string_view::npos)
        return std::nullopt;
    const std::string_view rest = address.substr(begin + key.size());
    return QByteArray::fromPercentEncoding(
               QByteArray::fromStdString(std::string(rest.substr(0, rest.find(',')))))
        .toStdString();
}

UniqueFd connectTo(const std::string& name) {
    sockaddr_un place = {};
    place.sun_family = AF_UNIX;
    UniqueFd socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!socket || name.size() >= sizeof place.sun_path)
        return {};
    std::copy(name.begin(), name.end(), place.sun_path);
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size());
    const auto* const address = reinterpret_cast<const sockaddr*>(&place);
    return ::connect(socket.get(), address, size) == 0 ? std::move(socket) : UniqueFd();
}

} // namespace

std::optional<UniqueFd> greetBus(const std::string& address, std::string_view greeting) {
    std::optional<std::string> name = valueOf(address, "path=");
    if (!name)
        if (const auto abstract = valueOf(address, "abstract="))
            name = std::string(1, '\0') + *abstract;
    if (!name)
        return std::nullopt;
    UniqueFd socket = connectTo(*name);
    if (socket && ::send(socket.get(), greeting.data(), greeting.size(), MSG_NOSIGNAL) < 0)
        socket.reset();
    return socket;
}

bool answersAsBus(const std::string& address, std::chrono::milliseconds limit) {
    const std::optional<UniqueFd> socket = greetBus(address);
    if (!socket || !*socket)
        return !socket;
    pollfd answer = {socket->get(), POLLIN, 0};
    return retryOnInterrupt([&] { return ::poll(&answer, 1, static_cast<int>(limit.count())); }) > 0;
}

} // namespace veilkeep

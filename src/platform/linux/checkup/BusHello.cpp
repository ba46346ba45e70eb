#include "platform/linux/checkup/BusHello.h"

#include "core/base/Hexadecimal.h"
#include "core/base/SystemCall.h"
#include "platform/linux/BusProbe.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace veilkeep {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr std::size_t longestLine = 4096; // of the bus, before its messages

// D-Bus Specification, "Message Protocol": a call of Hello, in this machine's byte order.
class HelloMessage {
public:
    HelloMessage() {
        m_bytes = {std::endian::native == std::endian::little ? 'l' : 'B', '\1', '\0', '\1'};
        addNumber(0); // size of the body
        addNumber(1); // serial number
        addNumber(0); // size of the fields, filled in below
        const std::size_t fieldsBegin = m_bytes.size();
        addField('\1', 'o', "/org/freedesktop/DBus");
        addField('\6', 's', "org.freedesktop.DBus");
        addField('\2', 's', "org.freedesktop.DBus");
        addField('\3', 's', "Hello");
        const auto size = static_cast<std::uint32_t>(m_bytes.size() - fieldsBegin);
        std::memcpy(&m_bytes[fieldsBegin - sizeof size], &size, sizeof size);
        pad(8);
    }

    const std::string& bytes() const { return m_bytes; }

private:
    void pad(std::size_t boundary) { m_bytes.resize((m_bytes.size() + boundary - 1) / boundary * boundary); }
    void addNumber(std::uint32_t number) {
        std::array<char, sizeof number> bytes = {};
        std::memcpy(bytes.data(), &number, sizeof number);
        m_bytes.append(bytes.data(), bytes.size());
    }
    void addField(char code, char type, std::string_view value) {
        pad(8);
        m_bytes += {code, '\1', type, '\0'};
        addNumber(static_cast<std::uint32_t>(value.size()));
        m_bytes.append(value);
        m_bytes.push_back('\0');
    }

    std::string m_bytes;
};

std::string logIn() {
    std::string user;
    for (const char digit : std::to_string(::geteuid()))
        user += hexadecimalByte(digit);
    return std::string(1, '\0') + "AUTH EXTERNAL " + user + "\r\nBEGIN\r\n" + HelloMessage().bytes();
}

// After "OK …" comes the answer, whose second byte says that it is one. Nothing while more bytes are needed.
std::optional<bool> isWelcome(std::string_view answer) {
    constexpr char methodReturn = 2;
    const std::size_t end = answer.find("\r\n");
    if (end == std::string_view::npos)
        return answer.size() < longestLine ? std::nullopt : std::optional(false);
    if (!answer.starts_with("OK "))
        return false;
    const std::string_view message = answer.substr(end + 2);
    return message.size() < 2 ? std::nullopt : std::optional(message[1] == methodReturn);
}

} // namespace

BusReach sayHelloTo(const std::string& address, milliseconds limit) {
    if (address.empty())
        return BusReach::Missing;
    const auto deadline = steady_clock::now() + limit;
    const std::optional<UniqueFd> socket = greetBus(address, logIn());
    if (!socket)
        return BusReach::Elsewhere;
    if (!*socket)
        return BusReach::Missing;
    std::string answer;
    for (;;) {
        const auto left = std::chrono::ceil<milliseconds>(deadline - steady_clock::now()).count();
        pollfd ready = {socket->get(), POLLIN, 0};
        if (left <= 0 || retryOnInterrupt([&] { return ::poll(&ready, 1, static_cast<int>(left)); }) <= 0)
            return BusReach::NotAnswered;
        std::array<char, 512> part = {};
        const ssize_t size =
            retryOnInterrupt([&] { return ::recv(socket->get(), part.data(), part.size(), 0); });
        if (size <= 0)
            return BusReach::NotAnswered;
        answer.append(part.data(), static_cast<std::size_t>(size));
        if (const auto welcome = isWelcome(answer))
            return *welcome ? BusReach::Reached : BusReach::NotAnswered;
    }
}

} // namespace veilkeep

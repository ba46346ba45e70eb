#include "core/base/FileUri.h"

#include "core/base/Hexadecimal.h"

#include <algorithm>

namespace veilkeep {
namespace {

bool isAlphanumeric(char byte) {
    return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
}

bool isWrittenAsItIs(char byte, UriSpelling spelling) {
    constexpr std::string_view both = "-._~!$&'()*+,=:@/", qtOnly = ";[]";
    return isAlphanumeric(byte) || both.find(byte) != std::string_view::npos ||
           (spelling == UriSpelling::Qt && qtOnly.find(byte) != std::string_view::npos);
}

bool startsWithIgnoringCase(std::string_view text, std::string_view lowerCase) {
    return text.size() >= lowerCase.size() &&
           std::equal(lowerCase.begin(), lowerCase.end(), text.begin(), [](char lower, char byte) {
               return (byte >= 'A' && byte <= 'Z' ? byte + 32 : byte) == lower;
           });
}

// What is no escape stays as it is.
std::string percentDecoded(std::string_view text) {
    std::string decoded;
    for (std::size_t index = 0; index < text.size(); ++index) {
        const int high = index + 2 < text.size() ? hexadecimalValue(text[index + 1]) : -1;
        const int low = high >= 0 ? hexadecimalValue(text[index + 2]) : -1;
        if (text[index] == '%' && low >= 0) {
            decoded.push_back(static_cast<char>(high * 16 + low));
            index += 2;
        } else {
            decoded.push_back(text[index]);
        }
    }
    return decoded;
}

} // namespace

std::string percentEncoded(std::string_view path, UriSpelling spelling) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string encoded;
    encoded.reserve(path.size());
    for (const char byte : path) {
        if (isWrittenAsItIs(byte, spelling)) {
            encoded.push_back(byte);
        } else {
            const auto number = static_cast<unsigned char>(byte);
            encoded.append({'%', digits[number >> 4], digits[number & 15]});
        }
    }
    return encoded;
}

std::string fileUri(std::string_view path, UriSpelling spelling) {
    return "file://" + percentEncoded(path, spelling);
}

std::optional<std::string> pathOfFileUri(std::string_view uri) {
    constexpr std::string_view scheme = "file:", localHost = "localhost";
    if (!startsWithIgnoringCase(uri, scheme))
        return std::nullopt;
    uri.remove_prefix(scheme.size());
    if (uri.starts_with("//")) {
        uri.remove_prefix(2);
        if (startsWithIgnoringCase(uri, localHost))
            uri.remove_prefix(localHost.size());
    }
    if (!uri.starts_with('/')) // of another machine, or relative
        return std::nullopt;
    std::string path = percentDecoded(uri.substr(0, uri.find_first_of("?#")));
    if (path.find('\0') != std::string::npos)
        return std::nullopt;
    return path;
}

} // namespace veilkeep

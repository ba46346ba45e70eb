#include "core/base/Md5.h"

#include "core/base/Hexadecimal.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace veilkeep {
namespace {

using State = std::array<std::uint32_t, 4>;

constexpr std::size_t blockSize = 64;

// The integer parts of 2^32 times |sin(1)|, |sin(2)|, ... |sin(64)|.
constexpr std::array<std::uint32_t, 64> sines = {
    0xd76aa478, 0xe8c7b756, 0x242070db, 0xc1bdceee, 0xf57c0faf, 0x4787c62a, 0xa8304613, 0xfd469501,
    0x698098d8, 0x8b44f7af, 0xffff5bb1, 0x895cd7be, 0x6b901122, 0xfd987193, 0xa679438e, 0x49b40821,
    0xf61e2562, 0xc040b340, 0x265e5a51, 0xe9b6c7aa, 0xd62f105d, 0x02441453, 0xd8a1e681, 0xe7d3fbc8,
    0x21e1cde6, 0xc33707d6, 0xf4d50d87, 0x455a14ed, 0xa9e3e905, 0xfcefa3f8, 0x676f02d9, 0x8d2a4c8a,
    0xfffa3942, 0x8771f681, 0x6d9d6122, 0xfde5380c, 0xa4beea44, 0x4bdecfa9, 0xf6bb4b60, 0xbebfbc70,
    0x289b7ec6, 0xeaa127fa, 0xd4ef3085, 0x04881d05, 0xd9d4d039, 0xe6db99e5, 0x1fa27cf8, 0xc4ac5665,
    0xf4292244, 0x432aff97, 0xab9423a7, 0xfc93a039, 0x655b59c3, 0x8f0ccc92, 0xffeff47d, 0x85845dd1,
    0x6fa87e4f, 0xfe2ce6e0, 0xa3014314, 0x4e0811a1, 0xf7537e82, 0xbd3af235, 0x2ad7d2bb, 0xeb86d391};

constexpr std::array<std::array<int, 4>, 4> rotations = {
    {{7, 12, 17, 22}, {5, 9, 14, 20}, {4, 11, 16, 23}, {6, 10, 15, 21}}};

std::uint32_t mixed(std::size_t round, std::uint32_t b, std::uint32_t c, std::uint32_t d) {
    switch (round) {
    case 0:
        return (b & c) | (~b & d);
    case 1:
        return (b & d) | (c & ~d);
    case 2:
        return b ^ c ^ d;
    default:
        return c ^ (b | ~d);
    }
}

std::size_t wordOfStep(std::size_t round, std::size_t step) {
    constexpr std::size_t factors[] = {1, 5, 3, 7}, offsets[] = {0, 1, 5, 0};
    return (factors[round] * step + offsets[round]) % 16;
}

std::uint32_t wordAt(std::string_view block, std::size_t index) {
    std::uint32_t word = 0;
    for (std::size_t byte = 4; byte-- > 0;)
        word = word << 8 | static_cast<unsigned char>(block[index * 4 + byte]);
    return word;
}

void addBlock(State& state, std::string_view block) {
    auto [a, b, c, d] = state;
    for (std::size_t step = 0; step < sines.size(); ++step) {
        const std::size_t round = step / 16;
        const std::uint32_t sum =
            a + mixed(round, b, c, d) + sines[step] + wordAt(block, wordOfStep(round, step));
        a = d;
        d = c;
        c = b;
        b += std::rotl(sum, rotations[round][step % 4]);
    }
    state = {state[0] + a, state[1] + b, state[2] + c, state[3] + d};
}

void addLittleEndian(std::string& bytes, std::uint64_t number, int count) {
    for (int byte = 0; byte < count; ++byte, number >>= 8)
        bytes.push_back(static_cast<char>(number & 0xff));
}

} // namespace

std::string md5(std::string_view bytes) {
    State state = {0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476};
    const std::uint64_t bits = std::uint64_t{bytes.size()} * 8;
    for (; bytes.size() >= blockSize; bytes.remove_prefix(blockSize))
        addBlock(state, bytes);
    std::string rest(bytes);
    rest.push_back(static_cast<char>(0x80));
    while (rest.size() % blockSize != blockSize - sizeof bits)
        rest.push_back('\0');
    addLittleEndian(rest, bits, sizeof bits);
    for (std::size_t begin = 0; begin < rest.size(); begin += blockSize)
        addBlock(state, std::string_view(rest).substr(begin));

    std::string digest, text;
    for (const std::uint32_t word : state)
        addLittleEndian(digest, word, sizeof word);
    for (const char byte : digest)
        text += hexadecimalByte(byte);
    return text;
}

} // namespace veilkeep

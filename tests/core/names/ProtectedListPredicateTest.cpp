#include "core/names/ProtectedListPredicate.h"

#include "tests/support/Rounds.h"

#include <gtest/gtest.h>

#include <locale.h>
#include <regex.h>

#include <random>

namespace veilkeep {
namespace {

// The pattern as the system's own regular expressions read it.
class Reference {
public:
    explicit Reference(const std::string& pattern) {
        setlocale(LC_ALL, "C");
        const std::string whole = "^(" + pattern + ")$";
        EXPECT_EQ(::regcomp(&m_compiled, whole.c_str(), REG_EXTENDED | REG_NOSUB), 0);
    }
    ~Reference() { ::regfree(&m_compiled); }
    bool matches(const std::string& text) const {
        return ::regexec(&m_compiled, text.c_str(), 0, nullptr, 0) == 0;
    }

private:
    regex_t m_compiled = {};
};

std::string generatedPath(std::mt19937& random, const std::string& home) {
    static const std::string words[] = {
        "net",     "tmp",   "var",    "cores",     "private",   "opt",     "dev",   "sbin",    "bin",
        "etc",     "usr",   "System", "Developer", "Library",   "Volumes", "Users", "Desktop", "Applications",
        "netx",    "u",     "Sites",  "Public",    "Pictures",  "Music",   "a\nb",  "Movies",  "Downloads",
        "Library", "\xFFx", "first",  "\n",        "Documents", "librar"};
    std::string path;
    if (random() % 2)
        path = home;
    for (char& byte : path)
        if (random() % 40 == 0)
            byte = "x/\n."[random() % 4];
    for (std::size_t count = random() % 3; count > 0; --count) {
        path.append(random() % 16 ? 1 : random() % 3, '/');
        path += words[random() % std::size(words)];
    }
    return path.append(random() % 3, '/');
}

TEST(ProtectedListPredicate, AgreesWithItsPattern) {
    const unsigned int seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (const std::string home :
         {"/home/u", "/Users/u", "/home/first.last", "/home/..", "/home/with blank", "/home/\xFF\xFE", "",
          "/home/line\nbreak", "/Volumes/u", "/home/c++", "/home/[ab]", "/home/a|/srv", "/home/{", "/home/$",
          "/home/(u)?", "/home/*"}) {
        const ProtectedListPredicate predicate(home);
        const Reference reference(predicate.pattern());
        std::size_t matches = 0;
        const auto count = static_cast<std::size_t>(test::rounds(2'000, 20'000));
        for (std::size_t round = 0; round < count; ++round) {
            const std::string path = generatedPath(random, home);
            matches += predicate.matches(path);
            ASSERT_EQ(predicate.matches(path), reference.matches(path))
                << testing::PrintToString(path) << " with home " << testing::PrintToString(home);
        }
        EXPECT_GT(matches, count / 10) << home;
        EXPECT_LT(matches, count * 9 / 10) << home;
    }
}

TEST(ProtectedListPredicate, LeavesOutAHomeThatBreaksThePattern) {
    const std::string withoutHome = ProtectedListPredicate("").pattern();
    for (const std::string home : {"/home/a(b", "/home/[", "/home/u\\", "/home/a))|((b"}) {
        const ProtectedListPredicate predicate(home);
        EXPECT_EQ(predicate.pattern(), withoutHome) << home;
        EXPECT_TRUE(predicate.matches("/etc/passwd/")) << home;
        EXPECT_FALSE(predicate.matches(home + "/Desktop")) << home;
    }
}

TEST(ProtectedListPredicate, MatchesTheWholeTextOnly) {
    const ProtectedListPredicate predicate("/home/a)|(/srv/b"); // its second half is not anchored
    EXPECT_TRUE(predicate.matches("/srv/b"));
    EXPECT_FALSE(predicate.matches("x/srv/b"));
    EXPECT_FALSE(predicate.matches("/srv/bx"));
}

TEST(ProtectedListPredicate, GoesByBytesInEveryLocale) {
    ASSERT_NE(setlocale(LC_ALL, "C.UTF-8"), nullptr);
    for (const std::string home : {"/home/(.)", "/home/."}) {
        const ProtectedListPredicate predicate(home);
        EXPECT_TRUE(predicate.matches("/home/\xFF/Desktop")) << home;
        EXPECT_TRUE(predicate.matches("/home/\n/Desktop")) << home;
        EXPECT_FALSE(predicate.matches("/home/\xC3\xA9/Desktop")) << home;
        EXPECT_TRUE(predicate.matches("/usr/\xFF\n")) << home;
    }
    EXPECT_EQ(MB_CUR_MAX, 6u) << "the process's own locale is still in force";
    setlocale(LC_ALL, "C");
}

} // namespace
} // namespace veilkeep

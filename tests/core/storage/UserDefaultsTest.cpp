#include "core/storage/UserDefaults.h"

#include "core/base/UniqueFd.h"
#include "core/log/Log.h"
#include "core/storage/PropertyList.h"
#include "tests/support/FailingCall.h"
#include "tests/support/RunInChild.h"
#include "tests/support/ScratchTree.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include <atomic>
#include <cerrno>
#include <filesystem>
#include <thread>

namespace veilkeep {
namespace {

using test::readFile;
using test::ScratchTree;

class UserDefaultsTest : public ::testing::Test {
protected:
    std::string path() const { return tree.home() + "/.config/com.ostrel.Veilkeep.plist"; }

    void store(const PropertyDictionary& values) const {
        tree.makeFile("home/.config/com.ostrel.Veilkeep.plist", *writePropertyList(values));
    }

    PropertyDictionary stored() const {
        const auto values = parsePropertyList(readFile(path()));
        return values ? *values : PropertyDictionary{{"unreadable", true}};
    }

    std::vector<std::string> damagedFiles() const {
        std::vector<std::string> contents;
        for (const auto& entry : std::filesystem::directory_iterator(tree.home() + "/.config"))
            if (entry.path().string().starts_with(path() + ".damaged-"))
                contents.push_back(readFile(entry.path()));
        return contents;
    }

    static std::vector<std::string> damagedContents() {
        const std::string whole = *writePropertyList({{"key", true}});
        return {"", "no property list", whole.substr(0, whole.size() / 2), std::string(2 << 20, 'x')};
    }

    ScratchTree tree;
};

TEST_F(UserDefaultsTest, KeepsWhatItDoesNotKnow) {
    const PropertyDictionary inner{{"deep", ValueList{Value("a"), Value(std::int64_t{2})}}};
    store({{"future", inner}, {"mine", std::int64_t{1}}});
    UserDefaults defaults;
    defaults.set("mine", std::int64_t{2});
    ASSERT_TRUE(defaults.synchronize());
    EXPECT_EQ(*stored().find("future"), Value(inner));
    EXPECT_EQ(stored().find("mine")->asInteger(), 2);
    struct stat status = {};
    ASSERT_EQ(::stat(path().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0600U);
}

// The values are of one size, and the file looks the same after each change but for what dates it.
TEST_F(UserDefaultsTest, SeesEachChangeOfAnotherAtOnce) {
    UserDefaults writer, reader;
    const auto inAnHour = std::filesystem::file_time_type::clock::now() + std::chrono::hours(1);
    for (int i = 100; i < 150; ++i) {
        writer.set("key", std::int64_t{i});
        ASSERT_TRUE(writer.synchronize());
        ASSERT_EQ(reader.integer("key"), i);
        for (const int inPlace : {i + 100, i + 200}) {
            store({{"key", std::int64_t{inPlace}}});
            std::filesystem::last_write_time(path(), inAnHour); // the clock has not ticked in between
            ASSERT_EQ(reader.integer("key"), inPlace);
        }
    }
    std::filesystem::remove(path());
    EXPECT_FALSE(reader.contains("key"));
}

TEST_F(UserDefaultsTest, TwoProcessesLoseNothing) {
    constexpr int keysOfEach = 200;
    const auto key = [](const char* name, int i) { return PropertyKey(name + std::to_string(i)); };
    std::vector<pid_t> children;
    for (const char* name : {"left", "right"})
        children.push_back(test::startChild([&] {
            UserDefaults defaults(path(), std::chrono::minutes(1));
            for (int i = 0; i < keysOfEach; ++i) {
                defaults.set(key(name, i), std::int64_t{i});
                ASSERT_TRUE(defaults.synchronize());
            }
        }));
    for (const pid_t child : children)
        EXPECT_TRUE(test::endedWell(child));
    const UserDefaults defaults;
    for (int i = 0; i < keysOfEach; ++i)
        for (const char* name : {"left", "right"})
            EXPECT_EQ(defaults.integer(key(name, i)), i) << name << i;
    EXPECT_EQ(stored().size(), 2U * keysOfEach);
    EXPECT_TRUE(damagedFiles().empty());
}

TEST_F(UserDefaultsTest, ThreadsReadWhatIsBeingStored) {
    UserDefaults defaults;
    std::atomic<int> last = 0;
    std::atomic<bool> isDone = false;
    defaults.set("key", std::int64_t{0});
    std::thread reader([&] {
        while (!isDone) {
            const int atLeast = last;
            EXPECT_GE(defaults.integer("key").value_or(-1), atLeast);
        }
    });
    for (int i = 1; i <= 100; ++i) {
        defaults.set("key", std::int64_t{i});
        last = i;
        EXPECT_TRUE(defaults.synchronize());
    }
    isDone = true;
    reader.join();
}

TEST_F(UserDefaultsTest, KeepsADamagedFile) {
    for (const std::string& row : damagedContents()) {
        SCOPED_TRACE(row.substr(0, 20));
        std::filesystem::remove_all(tree.home() + "/.config");
        tree.makeFile("home/.config/com.ostrel.Veilkeep.plist", row);
        UserDefaults defaults;
        std::vector<std::string> told;
        defaults.setDamagedWhileRunning([&](const std::string& kept) { told.push_back(readFile(kept)); });
        EXPECT_FALSE(defaults.contains("key"));
        EXPECT_NE(readFile(Log::shared().path()).find("settings cannot be read"), std::string::npos);
        EXPECT_TRUE(damagedFiles().empty());
        defaults.set("new", true);
        ASSERT_TRUE(defaults.synchronize());
        EXPECT_EQ(stored(), (PropertyDictionary{{"new", true}}));
        EXPECT_EQ(damagedFiles(), std::vector<std::string>{row});
        defaults.set("new", false);
        ASSERT_TRUE(defaults.synchronize());
        EXPECT_EQ(told, std::vector<std::string>{row});
    }
}

TEST_F(UserDefaultsTest, KeepsAFileThatCannotBeReadAndTells) {
    store({{"key", "old"}});
    const std::string before = readFile(path());
    EXPECT_TRUE(test::runInChild([&] {
        UserDefaults defaults;
        int told = 0;
        defaults.setDamagedWhileRunning([&](const std::string&) { ++told; });
        ASSERT_TRUE(test::failCall(SYS_read, EIO));
        defaults.set("key", "new");
        EXPECT_TRUE(defaults.synchronize());
        EXPECT_EQ(told, 1);
    }));
    EXPECT_EQ(damagedFiles(), std::vector<std::string>{before});
    EXPECT_EQ(stored(), (PropertyDictionary{{"key", "new"}}));
}

TEST_F(UserDefaultsTest, PutsADamagedFileAsideOnce) {
    UserDefaults defaults;
    EXPECT_EQ(*defaults.keepDamagedAside(), std::nullopt) << "there is none";
    store({{"key", true}});
    EXPECT_EQ(*defaults.keepDamagedAside(), std::nullopt);
    EXPECT_EQ(defaults.boolean("key"), true);
    std::size_t number = 0;
    for (const std::string& row : damagedContents()) {
        SCOPED_TRACE(row.substr(0, 20));
        tree.makeFile("home/.config/com.ostrel.Veilkeep.plist", row);
        const auto kept = defaults.keepDamagedAside();
        ASSERT_TRUE(kept && *kept);
        EXPECT_EQ(readFile(**kept), row);
        EXPECT_FALSE(test::exists(path()));
        EXPECT_FALSE(defaults.contains("key"));
        EXPECT_EQ(*defaults.keepDamagedAside(), std::nullopt) << "at the next start";
        EXPECT_EQ(damagedFiles().size(), ++number) << "one name each";
    }
    std::filesystem::create_directory(path());
    EXPECT_EQ(*defaults.keepDamagedAside(), std::nullopt) << "is no file of settings";
}

TEST_F(UserDefaultsTest, KeepsChangesPendingWhenTheyCannotBeStored) {
    store({{"key", "old"}});
    UserDefaults defaults(path(), std::chrono::milliseconds(20));
    defaults.set("key", "new");
    {
        const std::string lockFile = tree.home() + "/.config/.com.ostrel.Veilkeep.plist.lock";
        const UniqueFd lock(::open(lockFile.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
        ASSERT_EQ(::flock(lock.get(), LOCK_EX), 0);
        const auto blocked = defaults.synchronize();
        ASSERT_FALSE(blocked);
        EXPECT_EQ(blocked.error().systemError, EWOULDBLOCK);
    }
    EXPECT_EQ(defaults.string("key"), "new");
    EXPECT_EQ(stored(), (PropertyDictionary{{"key", "old"}}));
    defaults.set("unwanted", true);
    defaults.discard("unwanted");
    EXPECT_FALSE(defaults.contains("unwanted"));
    defaults.set("large", std::string(2 << 20, 'x')); // nobody could read that again
    EXPECT_EQ(defaults.synchronize().error().code, ErrorCode::TooLarge);
    defaults.remove("large");
    ASSERT_TRUE(defaults.synchronize());
    EXPECT_EQ(stored(), (PropertyDictionary{{"key", "new"}}));
}

} // namespace
} // namespace veilkeep

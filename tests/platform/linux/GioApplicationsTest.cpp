#include "platform/linux/GioApplications.h"

#include "tests/support/ScratchTree.h"
#include "tests/support/TurnUntil.h"
#include "tests/support/bus/BusService.h"
#include "tests/support/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <optional>

namespace veilkeep {
namespace {

constexpr std::string_view unknownContent("\0\1\2\3", 4);

// GIO looks for its folders once in a process: this is the whole desktop of all these tests.
class Desktop {
public:
    Desktop() : m_program(tree.makeFile("recorder", script(), 0755)) {
        ::unsetenv("XDG_CURRENT_DESKTOP");
        ::setenv("XDG_DATA_DIRS", tree.makeDirectory("no data").c_str(), 1);
        ::setenv("XDG_CONFIG_DIRS", tree.makeDirectory("no configuration").c_str(), 1);
        ::setenv("RECORDED", tree.makeDirectory("recorded").c_str(), 1);
        add("org.example.Files", "Paths", "%f", "Icon=paths\nMimeType=text/plain;image/png;\n");
        add("org.example.Uris", "Twins", "--uri=x %u", "Icon=/icons/uris.png\nMimeType=text/plain;\n");
        add("org.example.Twin", "Twins", "%F", "MimeType=text/plain;\nX-AppImage-Version=2.1\n");
        add("org.example.Missing", "Missing", "%f", "TryExec=/no/such/program\nMimeType=text/plain;\n");
        add("org.example.Plain", "Another", "", "");
        add("org.example.Secret", "Secret", "", "NoDisplay=true\nMimeType=text/plain;\n");
        add("org.example.Bus", "Bus", "%u", "DBusActivatable=true\nMimeType=image/gif;\n");
        tree.makeFile(
            "home/.local/share/applications/mimeinfo.cache", // of the desktop's own making
            "[MIME Cache]\nimage/gif=org.example.Bus.desktop;\ntext/plain=org.example.Files.desktop;"
            "org.example.Missing.desktop;org.example.Secret.desktop;org.example.Twin.desktop;"
            "org.example.Uris.desktop;\n");
        tree.makeFile("home/.config/mimeapps.list",
                      "[Default Applications]\ntext/plain=org.example.Uris.desktop\n");
    }

    // Argument for argument, then the environment; empty until the program has written all of it.
    QByteArrayList recorded() const {
        const std::string file = tree.path("recorded/all");
        EXPECT_TRUE(test::waitUntil([&] { return test::exists(file); }));
        const std::string content = test::readFile(file);
        ::unlink(file.c_str());
        return QByteArray::fromStdString(content).split('\0');
    }

    test::ScratchTree tree;

private:
    static std::string script() {
        return "#!/bin/sh\n"
               "{ printf '%s\\0' \"$@\" SESSION=$(ps -o sid= -p $$) BLOCKED=$(sed -n 's/SigBlk:\\t//p' "
               "/proc/$$/status)\n"
               "env -0; } > \"$RECORDED/part\"\nmv \"$RECORDED/part\" \"$RECORDED/all\"\n";
    }
    void add(const std::string& identifier, const std::string& name, const std::string& arguments,
             const std::string& more) const {
        tree.makeFile("home/.local/share/applications/" + identifier + ".desktop",
                      "[Desktop Entry]\nType=Application\nVersion=1.4\nName=" + name + "\nExec=" + m_program +
                          " " + arguments + "\n" + more);
    }

    std::string m_program;
};

class GioApplicationsTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        ::setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
        desktop.emplace();
    }
    static void TearDownTestSuite() { desktop.reset(); }

    static QStringList identifiers(const std::vector<InstalledApplication>& applications) {
        QStringList found;
        for (const InstalledApplication& application : applications)
            found << application.identifier;
        return found;
    }

    static std::optional<Desktop> desktop;
    std::vector<int> lateTroubles;
    GioApplications applications{[this](const Error& error) { lateTroubles.push_back(error.systemError); },
                                 [] { return std::string("token-9"); }};
};

std::optional<Desktop> GioApplicationsTest::desktop;

TEST_F(GioApplicationsTest, NamesThoseThatCanOpenAnItemAndAllToChooseAmong) {
    const Applications::ForItem text =
        applications.applicationsFor(desktop->tree.makeFile("a \xff.txt", "some text\n"));
    EXPECT_EQ(text.defaultApplication,
              (InstalledApplication{"org.example.Uris.desktop", "Twins", "", "/icons/uris.png"}));
    QStringList able;
    for (const InstalledApplication& application : text.all)
        able << application.identifier + application.version;
    able.sort();
    EXPECT_EQ(able.join(' ').remove("org.example.").remove(".desktop").toStdString(),
              "Files Secret Twin2.1 Uris");

    for (const std::string& unknown :
         {desktop->tree.makeFile("item.zip", unknownContent), desktop->tree.path("missing"),
          desktop->tree.makeDirectory("folder")}) {
        const Applications::ForItem none = applications.applicationsFor(unknown);
        EXPECT_FALSE(none.defaultApplication) << unknown;
        EXPECT_TRUE(none.all.empty()) << unknown;
    }
    EXPECT_EQ(
        identifiers(applications.everyApplication()),
        (QStringList{"org.example.Plain.desktop", "org.example.Bus.desktop", "org.example.Files.desktop",
                     "org.example.Twin.desktop", "org.example.Uris.desktop"}));
}

TEST_F(GioApplicationsTest, HandsOverTheExactNameAndNothingOfItsOwn) {
    ::setenv("DESKTOP_AUTOSTART_ID", "1", 1);
    ::setenv("DESKTOP_STARTUP_ID", "1", 1);
    ::setenv("VEILKEEP_TEST", "1", 1);
    ::setenv("OF_THE_USER", "1", 1);
    sigset_t blocked, before;
    ::sigemptyset(&blocked);
    ::sigaddset(&blocked, SIGTERM);
    ::pthread_sigmask(SIG_BLOCK, &blocked, &before); // as a program that takes its end in order does
    for (const char* const name : {"plain.txt", "-rf.txt", "a\nb.txt", "%u 100%.txt", "\xff\xfe.txt",
                                   "'\"$(id)`id`\\.txt", " leading.txt"}) {
        const std::string item = desktop->tree.makeFile(std::string("items/") + name, "text");
        ASSERT_TRUE(applications.openWith("org.example.Files.desktop", item)) << name;
        const QByteArrayList recorded = desktop->recorded();
        EXPECT_EQ(recorded.value(0).toStdString(), item) << name;
        EXPECT_TRUE(recorded.contains("XDG_ACTIVATION_TOKEN=token-9"));
        EXPECT_TRUE(recorded.contains("OF_THE_USER=1"));
        EXPECT_TRUE(recorded.contains("BLOCKED=0000000000000000")) << recorded.value(2).data();
        for (const QByteArray& entry : recorded) {
            EXPECT_FALSE(entry.startsWith("DESKTOP_") || entry.startsWith("VEILKEEP_")) << entry.data();
            EXPECT_NE(entry, "SESSION=" + QByteArray::number(::getsid(0)));
        }
    }
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    const std::string defaults = test::readFile(desktop->tree.path("home/.config/mimeapps.list"));

    const std::string item = desktop->tree.makeFile("items/\xff b.txt", "text");
    ASSERT_TRUE(applications.open(item));
    const QByteArrayList recorded = desktop->recorded();
    EXPECT_EQ(recorded.value(0), "--uri=x");
    EXPECT_EQ(recorded.value(1).toStdString(), item) << "GIO writes files of this machine as paths";
    EXPECT_EQ(test::readFile(desktop->tree.path("home/.config/mimeapps.list")), defaults);
    EXPECT_TRUE(lateTroubles.empty());
}

TEST_F(GioApplicationsTest, TellsWhatCannotBeOpened) {
    const std::string text = desktop->tree.makeFile("text.txt", "text");
    const std::string unknown = desktop->tree.makeFile("data.zip", unknownContent);
    const std::string missing = desktop->tree.path("missing.txt");
    EXPECT_EQ(applications.open(unknown).error(), Error::system("open", unknown, ENOTSUP));
    EXPECT_EQ(applications.open(missing).error(), Error::system("stat", missing, ENOENT));
    for (const char* const identifier : {"org.example.Missing.desktop", "../x.desktop", "", "\n"})
        EXPECT_EQ(applications.openWith(identifier, text).error(), Error::system("openWith", text, ENOTSUP))
            << identifier;
}

TEST_F(GioApplicationsTest, TellsLaterOfAnApplicationThatTheBusCannotStartAndOutlivesTheBus) {
    std::optional<test::PrivateBus> bus(std::in_place, desktop->tree, test::PrivateBus::Place::Session);
    if (!bus->whyMissing().empty())
        GTEST_SKIP() << bus->whyMissing();
    const std::string image = desktop->tree.makeFile("image.gif", "GIF89a");
    const auto waitForTrouble = [this](std::size_t count) {
        return test::turnUntil([this, count] { return lateTroubles.size() == count; });
    };
    ASSERT_TRUE(applications.openWith("org.example.Bus.desktop", image));
    EXPECT_TRUE(waitForTrouble(1)) << "nobody there";

    const test::BusService silent(
        "org.example.Bus", [](const QDBusMessage&) { return QDBusMessage(); }, QDBusConnection::SessionBus);
    ASSERT_TRUE(applications.openWith("org.example.Bus.desktop", image));
    EXPECT_TRUE(test::turnUntil([&] { return silent.calls("Open").size() == 1; }));
    bus.reset();
    EXPECT_TRUE(waitForTrouble(2)) << "the bus has ended";
}

} // namespace
} // namespace veilkeep

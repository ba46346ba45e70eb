#include "platform/linux/FileManagerViewer.h"

#include "tests/support/TurnUntil.h"
#include "tests/support/bus/BusService.h"
#include "tests/support/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace veilkeep {
namespace {

class RecordingApplications : public Applications {
public:
    ForItem applicationsFor(const std::string&) override { return {}; }
    std::vector<InstalledApplication> everyApplication() override { return {}; }
    Result<void> open(const std::string& path) override {
        opened.push_back(path);
        return canOpen ? Result<void>() : Result<void>(Error::system("open", path, ENOTSUP));
    }
    Result<void> openWith(const QString&, const std::string&) override { return {}; }

    bool canOpen = true;
    std::vector<std::string> opened;
};

class FileManagerViewerTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!m_bus.whyMissing().empty())
            GTEST_SKIP() << m_bus.whyMissing();
    }

    void connectToBus() {
        link.start();
        ASSERT_TRUE(test::turnUntil([this] { return link.isUp(); }));
    }

    test::ScratchTree m_tree;
    test::PrivateBus m_bus{m_tree, test::PrivateBus::Place::Session};
    BusLink link{BusLink::Bus::Session};
    RecordingApplications applications;
    std::vector<int> troubles;
    FileManagerViewer viewer{link, applications,
                             [this](const Error& error) { troubles.push_back(error.systemError); },
                             [] { return QString("token-7"); }};
};

TEST_F(FileManagerViewerTest, AsksTheFileManagerByTheItemsExactName) {
    connectToBus();
    test::BusService manager(
        "org.freedesktop.FileManager1", [](const QDBusMessage& call) { return call.createReply(); },
        QDBusConnection::SessionBus);
    const std::string item = m_tree.makeFile("a\xff 100%\nb");

    viewer.selectFile(item);

    EXPECT_TRUE(test::turnUntil([&] { return manager.calls("ShowItems").size() == 1; }));
    const QVariantList arguments = manager.calls("ShowItems").front().arguments();
    const QString uris = arguments.value(0).toStringList().join(' ');
    EXPECT_TRUE(uris.startsWith("file:///") && uris.endsWith("/a%FF%20100%25%0Ab")) << uris.toStdString();
    EXPECT_EQ(arguments.value(1).toString(), "token-7");
    EXPECT_TRUE(applications.opened.empty());
    EXPECT_TRUE(troubles.empty());
}

TEST_F(FileManagerViewerTest, OpensTheFolderWhereNoFileManagerAnswers) {
    const std::string item = m_tree.makeFile("folder/item");
    const std::vector<std::string> folder{m_tree.path("folder")};

    viewer.selectFile(item); // there is no bus yet
    EXPECT_EQ(std::exchange(applications.opened, {}), folder);

    connectToBus();
    viewer.selectFile(item); // nobody there
    EXPECT_TRUE(applications.opened.empty()) << "was waited for";
    EXPECT_TRUE(test::turnUntil([&] { return applications.opened == folder; }));
    applications.opened.clear();

    const auto refuse = [](const QDBusMessage& call) {
        return call.createErrorReply("org.example.No", "no");
    };
    const test::BusService broken("org.freedesktop.FileManager1", refuse, QDBusConnection::SessionBus);
    applications.canOpen = false;
    viewer.selectFile(item);
    EXPECT_TRUE(test::turnUntil([&] { return !troubles.empty(); }));
    EXPECT_EQ(applications.opened, folder);
    EXPECT_EQ(std::exchange(troubles, {}), std::vector{ENOTSUP});

    viewer.selectFile(m_tree.path("no folder/item"));
    EXPECT_EQ(troubles, std::vector{ENOENT});
}

} // namespace
} // namespace veilkeep

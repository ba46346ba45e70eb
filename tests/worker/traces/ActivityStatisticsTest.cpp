#include "worker/traces/ActivityStatistics.h"

#include "tests/support/BackgroundProgram.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/SilentSocket.h"

#include <gio/gio.h>
#include <gtest/gtest.h>

#include <unistd.h>

namespace veilkeep::test {
namespace {

constexpr const char* daemon = "/usr/bin/dbus-daemon";

// Stands in for the activity manager and notes what it is told to forget. Lives on a thread of GDBus.
class FakeActivityManager {
public:
    explicit FakeActivityManager(const std::string& address) {
        m_bus = g_dbus_connection_new_for_address_sync(
            address.c_str(),
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
            nullptr, nullptr, nullptr);
        g_dbus_connection_add_filter(m_bus, answer, this, nullptr);
        GVariant* reply = g_dbus_connection_call_sync(m_bus, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                      "org.freedesktop.DBus", "RequestName",
                                                      g_variant_new("(su)", "org.kde.ActivityManager", 4U),
                                                      nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
        g_variant_unref(reply);
    }
    ~FakeActivityManager() {
        g_dbus_connection_close_sync(m_bus, nullptr, nullptr);
        g_object_unref(m_bus);
    }
    FakeActivityManager(const FakeActivityManager&) = delete;
    FakeActivityManager& operator=(const FakeActivityManager&) = delete;

    std::vector<std::string> told; // read after the callers have their answers

private:
    static GDBusMessage* answer(GDBusConnection* bus, GDBusMessage* message, gboolean incoming,
                                gpointer self) {
        if (!incoming || g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL)
            return message;
        const char *activity = "", *client = "", *resource = "";
        g_variant_get(g_dbus_message_get_body(message), "(&s&s&s)", &activity, &client, &resource);
        static_cast<FakeActivityManager*>(self)->told.push_back(
            std::string(g_dbus_message_get_path(message)) + " " + g_dbus_message_get_interface(message) +
            "." + g_dbus_message_get_member(message) + " " + activity + " " + client + " " + resource);
        GDBusMessage* const reply = g_dbus_message_new_method_reply(message);
        g_dbus_connection_send_message(bus, reply, G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr, nullptr);
        g_object_unref(reply);
        g_object_unref(message);
        return nullptr;
    }

    GDBusConnection* m_bus = nullptr;
};

TEST(ActivityStatistics, TheRunningManagerIsToldOfItemsAndWhatLiesBelow) {
    const ScratchTree tree;
    if (::access(daemon, X_OK) != 0)
        GTEST_SKIP() << daemon << " is missing";
    BackgroundProgram bus(
        {daemon, "--session", "--nofork", "--print-address", "--address=unix:path=" + tree.path("bus")});
    const std::string address = bus.readLine();
    ASSERT_FALSE(address.empty());
    tree.makeFile("d/.SYS_INDEX/b*a\\_%'", "");
    tree.makeDirectory("d/.SYS_INDEX/rid");
    tree.makeFile("d/.SYS_INDEX/\xff", "");
    const TracedItems items({tree.path("d/'%_\\a*b"), tree.path("d/dir"), tree.path("d/\xff")});
    EXPECT_TRUE(removeActivityStatistics(address, items)); // nobody there, nobody started

    FakeActivityManager manager(address);
    EXPECT_TRUE(removeActivityStatistics(address, items));
    const std::string call = "/ActivityManager/Resources/Scoring "
                             "org.kde.ActivityManager.ResourcesScoring.DeleteStatsForResource :any :any ";
    EXPECT_EQ(manager.told,
              (std::vector<std::string>{call + tree.path("d/'%_\\\\a\\*b"), call + tree.path("d/dir"),
                                        call + tree.path("d/dir/*")}));
}

TEST(ActivityStatistics, ABusThatNeverAnswersIsGivenUp) {
    const ScratchTree tree;
    const std::string socket = tree.path("silent");
    const UniqueFd silent = listenAt(socket);
    ASSERT_TRUE(silent);
    const TracedItems items({"/a"});
    EXPECT_TRUE(removeActivityStatistics("unix:path=" + socket, items, std::chrono::milliseconds(20)));
    EXPECT_TRUE(removeActivityStatistics("unix:path=" + tree.path("missing"), items));
    EXPECT_TRUE(removeActivityStatistics("", items));
}

} // namespace
} // namespace veilkeep::test

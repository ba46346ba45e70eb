#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QThread>
#include <QVariant>

#include <memory>
#include <vector>

namespace veilkeep::test {

class FakeTrayWatcher;

// An entry of a tray item's menu, its label without mnemonics.
struct TrayEntry {
    int id = 0;
    QString label;
    bool isEnabled = true;
    bool isVisible = true;
    bool isSeparator = false;
    std::vector<TrayEntry> children;
};

// Stands for a desktop's tray on the user's session bus: the watcher, in a thread of its own, and one host.
// What it asks items for is asked while the event loop runs, so that the item may be this process's.
class FakeTray {
public:
    FakeTray(); // is there at once, with a host
    ~FakeTray();
    FakeTray(const FakeTray&) = delete;
    FakeTray& operator=(const FakeTray&) = delete;

    void stop();  // as a panel that crashes
    void start(); // and comes back
    void setHost(bool isThere);

    // Of those that registered since the start the ones that are still on the bus, by their unique names.
    QStringList items() const;

    // Of the latest item.
    QVariant property(const QString& name);
    void click();
    std::vector<TrayEntry> menu();        // opens it, and closes it again
    bool choose(const QStringList& path); // labels, from the menu inwards; does not tell that it is closed
    void closeMenu();

private:
    QDBusMessage ask(const QString& path, const QString& interface, const QString& method,
                     const QVariantList& arguments);
    QString menuPath();
    std::vector<TrayEntry> entriesOf(int parent);
    void tellMenu(int entry, const QString& event);

    QThread m_thread;
    std::unique_ptr<FakeTrayWatcher> m_watcher;
    std::unique_ptr<QDBusConnection> m_asking;
};

} // namespace veilkeep::test

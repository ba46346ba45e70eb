#include "platform/linux/gui/TaskbarEntries.h"

#include <QEvent>
#include <QWindow>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include <xcb/xcb.h>

namespace veilkeep {
namespace {

template <class Reply>
using ReplyPointer = std::unique_ptr<Reply, decltype(&std::free)>;

template <class Reply>
ReplyPointer<Reply> owned(Reply* reply) {
    return {reply, &std::free};
}

// Null where the windows are not those of an X display.
xcb_connection_t* connection() {
    auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

xcb_atom_t atom(xcb_connection_t* display, std::string_view name) {
    const auto asked = xcb_intern_atom(display, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const auto answer = owned(xcb_intern_atom_reply(display, asked, nullptr));
    return answer ? answer->atom : xcb_atom_t{XCB_ATOM_NONE};
}

// No entry for what belongs to another window anyway: menus, tool tips.
bool mayHaveEntry(const QWindow& window) {
    return window.isTopLevel() && (window.type() == Qt::Window || window.type() == Qt::Dialog);
}

struct Atoms {
    explicit Atoms(xcb_connection_t* display)
        : state(atom(display, "_NET_WM_STATE")), skip(atom(display, "_NET_WM_STATE_SKIP_TASKBAR")) {}
    const xcb_atom_t state, skip;
};

std::vector<xcb_atom_t> statesOf(xcb_connection_t* display, xcb_window_t window, const Atoms& atoms) {
    constexpr std::uint32_t most = 64;
    const auto asked = xcb_get_property(display, 0, window, atoms.state, XCB_ATOM_ATOM, 0, most);
    const auto answer = owned(xcb_get_property_reply(display, asked, nullptr));
    if (!answer || answer->type != XCB_ATOM_ATOM || answer->format != 32)
        return {};
    const auto* const first = static_cast<const xcb_atom_t*>(xcb_get_property_value(answer.get()));
    return {first, first + answer->value_len};
}

// Of a window that is not on the screen; what else it says of itself stays.
void setOwnState(xcb_connection_t* display, xcb_window_t window, bool isSkipped) {
    const Atoms atoms(display);
    std::vector<xcb_atom_t> states = statesOf(display, window, atoms);
    const bool wasSkipped = std::erase(states, atoms.skip) > 0;
    if (wasSkipped == isSkipped)
        return;
    if (isSkipped)
        states.push_back(atoms.skip);
    xcb_change_property(display, XCB_PROP_MODE_REPLACE, window, atoms.state, XCB_ATOM_ATOM, 32,
                        static_cast<std::uint32_t>(states.size()), states.data());
}

// The window manager's to change once the window is shown.
void askWindowManager(xcb_connection_t* display, xcb_window_t window, bool isSkipped) {
    const Atoms atoms(display);
    const auto tree = owned(xcb_query_tree_reply(display, xcb_query_tree(display, window), nullptr));
    if (!tree)
        return;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atoms.state;
    message.data.data32[0] = isSkipped ? 1 : 0; // add, remove
    message.data.data32[1] = atoms.skip;
    message.data.data32[3] = 1; // from an application
    xcb_send_event(display, 0, tree->root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(display);
}

} // namespace

TaskbarEntries::TaskbarEntries(QGuiApplication& application, std::function<bool()> areWanted)
    : m_areWanted(std::move(areWanted)) {
    application.installEventFilter(this);
}

void TaskbarEntries::update() {
    xcb_connection_t* const display = connection();
    if (!display)
        return;
    for (const QWindow* const window : QGuiApplication::topLevelWindows())
        if (mayHaveEntry(*window) && window->isVisible())
            askWindowManager(display, static_cast<xcb_window_t>(window->winId()), !m_areWanted());
}

bool TaskbarEntries::eventFilter(QObject* watched, QEvent* event) {
    const auto* const window = event->type() == QEvent::Show ? qobject_cast<QWindow*>(watched) : nullptr;
    if (window && mayHaveEntry(*window))
        if (xcb_connection_t* const display = connection())
            setOwnState(display, static_cast<xcb_window_t>(window->winId()), !m_areWanted());
    return QObject::eventFilter(watched, event);
}

} // namespace veilkeep

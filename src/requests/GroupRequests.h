#pragma once

#include "requests/BatchReport.h"
#include "requests/RequestWork.h"

#include <optional>
#include <string>

namespace veilkeep {

// Requests on groups, and on the items of one or of all. Groups are found by their names, byte for byte, the
// first where several bear one; a header row is no group. Lives for one request; main thread.
class GroupRequests {
public:
    explicit GroupRequests(RequestWork& work) : m_work(work) {}

    void tellGroups();  // "groups": a row for each, see groupRow()
    void change();      // "group"
    void moveItems();   // "move"
    void hideItems();   // "hide" of a group, or of all
    void unhideItems(); // "unhide" likewise
    void autoHide();
    void autoUnhide();

private:
    ListedGroup groupOrAll();
    void moveAll(BatchReport::Move move);
    bool mayBeNamed(const std::string& name);
    bool mayBeEdited(const ListedGroup& group);

    void add();
    void remove(const ListedGroup& group);
    void rename(const ListedGroup& group);
    void setIcon(const ListedGroup& group);
    void setAutoHide(const ListedGroup& group);
    void order(const ListedGroup& group);
    std::optional<std::size_t> wantedRow(std::size_t ownRow);

    RequestWork& m_work;
};

// What "groups" tells of a group. The name and the icon are QByteArrays, bytes as they are:
//   name; id, items: qlonglong; state: "hidden" or "shown"; autoHide, removable: bool; icon.
QVariantMap groupRow(const Group& group, std::size_t items);

} // namespace veilkeep

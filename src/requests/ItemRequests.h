#pragma once

#include "requests/BatchReport.h"
#include "requests/RequestWork.h"

#include <string>
#include <vector>

namespace veilkeep {

// Requests on items that are named one by one: takes them into the list where that is wanted, does what is
// asked, and tells of each what became of it. Lives for one request; main thread.
class ItemRequests {
public:
    explicit ItemRequests(RequestWork& work) : m_work(work) {}

    void add();
    void remove();
    void hide();
    void unhide();

private:
    using Files = FilesViewController::Files;

    std::vector<std::string> pathsOnce() const;
    // What keeps an item that is not listed from being listed as a visible one; empty where nothing does.
    static QString refusal(const std::string& path);
    bool takeInHidden(const std::string& path);
    void addAll(const std::vector<std::string>& paths);

    void choose(const ListedFile& file, const std::string& path);
    void moveChosen(BatchReport::Move move);

    RequestWork& m_work;
    Files m_chosen;
    BatchReport::Names m_pathOf; // as the request names it
};

} // namespace veilkeep

#include "tests/endurance/WorldModel.h"

#include "core/base/PathText.h"
#include "core/names/HiddenName.h"
#include "format/PrintableName.h"
#include "tests/support/HostileNames.h"
#include "tests/support/ScratchTree.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <numeric>
#include <set>

namespace veilkeep::test {
namespace {

enum class Kind { Folder, File, Link };
constexpr Kind kinds[] = {Kind::Folder, Kind::Folder, Kind::Folder, Kind::Folder, Kind::Folder,
                          Kind::File,   Kind::File,   Kind::File,   Kind::File,   Kind::File,
                          Kind::File,   Kind::Link,   Kind::Link};

// Such as can be hidden, and do not look as if they were.
std::vector<std::string> usableHostileNames() {
    std::vector<std::string> names = hostileNames();
    std::erase_if(names, [](const std::string& name) {
        return refusalToHide(name) != NameRefusal::None ||
               name.find(hiddenDirectoryName) != std::string::npos ||
               scrambledName(name).find(hiddenDirectoryName) != std::string::npos;
    });
    return names;
}

// What hiding, bringing back and moving leave as it is.
ItemState lastingState(ItemState state) {
    if (S_ISDIR(state.mode))
        state.modified = 0;
    return state;
}

} // namespace

WorldModel::WorldModel(std::string root, Choices& choices) : m_root(std::move(root)) {
    static const std::vector<std::string> hostile = usableHostileNames();
    std::filesystem::create_directory(m_root);
    std::set<std::string> taken;
    for (const Kind kind : kinds) {
        const std::string number = std::to_string(m_items.size());
        std::string hostileName;
        do
            hostileName = hostile[choices.below(hostile.size())];
        while (!taken.insert(hostileName).second);
        Item item;
        item.names = {"item" + number, number + " report.pdf", std::move(hostileName)};
        item.name = choices.below(item.names.size());
        item.folder = chooseFolder(choices);
        item.isFolder = kind == Kind::Folder;
        make(std::move(item), kind == Kind::File ? "content " + number : "");
    }
}

// Without content a link that leads nowhere.
void WorldModel::make(Item item, const std::string& content) {
    const std::string path = placeOf(item);
    if (item.isFolder)
        std::filesystem::create_directory(path);
    else if (content.empty())
        std::filesystem::create_symlink("nowhere " + item.names.front(), path);
    else
        writeFile(path, content);
    item.state = lastingState(snapshotOf(path).at(""));
    m_items.push_back(std::move(item));
}

WorldModel::Number WorldModel::chooseFolder(Choices& choices) const {
    std::vector<Number> folders = {none};
    for (Number item = 0; item < m_items.size(); ++item)
        if (m_items[item].isFolder)
            folders.push_back(item);
    return folders[choices.below(folders.size())];
}

std::string WorldModel::placeOf(const Item& item) const {
    const std::string folder = item.folder == none ? m_root : path(item.folder);
    const std::string& name = item.names[item.name];
    return item.isHidden ? joinPath(joinPath(folder, hiddenDirectoryName), scrambledName(name))
                         : joinPath(folder, name);
}

std::string WorldModel::path(Number item) const {
    return placeOf(m_items[item]);
}

std::string WorldModel::originalPath(Number number) const {
    const Item& item = m_items[number];
    return joinPath(item.folder == none ? m_root : originalPath(item.folder), item.names[item.name]);
}

std::string WorldModel::shown(Number item) const {
    return printableName(path(item).substr(m_root.size() + 1));
}

bool WorldModel::isHidden(Number item) const {
    return m_items[item].isHidden || (m_items[item].folder != none && isHidden(m_items[item].folder));
}

bool WorldModel::isBelow(Number item, Number folder) const {
    for (; item != none; item = m_items[item].folder)
        if (item == folder)
            return true;
    return false;
}

WorldModel::Number WorldModel::withInode(std::uint64_t inode) const {
    const auto found = std::ranges::find(m_items, inode, [](const Item& item) { return item.state.inode; });
    return static_cast<Number>(found - m_items.begin());
}

std::size_t WorldModel::depthOf(Number item) const {
    return m_items[item].folder == none ? 0 : 1 + depthOf(m_items[item].folder);
}

bool WorldModel::isAtItsPlace(Number item) const {
    struct stat status = {};
    return ::lstat(path(item).c_str(), &status) == 0 && status.st_ino == m_items[item].state.inode;
}

// Folders first: where an item lies depends on them.
void WorldModel::seeWhatIsHidden() {
    std::vector<Number> items(m_items.size());
    std::iota(items.begin(), items.end(), Number{0});
    std::ranges::stable_sort(items, {}, [this](Number item) { return depthOf(item); });
    for (const Number item : items) {
        if (isAtItsPlace(item))
            continue;
        bool& isHidden = m_items[item].isHidden;
        isHidden = !isHidden;
        if (!isAtItsPlace(item))
            isHidden = !isHidden; // it is lost, and difference() says so
    }
}

std::string WorldModel::moveByHand(Choices& choices) {
    const Number number = choices.below(m_items.size());
    Item moved = m_items[number];
    if (!choices.oneIn(3))
        moved.folder = chooseFolder(choices);
    moved.name = choices.below(moved.names.size());
    moved.isHidden = choices.oneIn(moved.isHidden ? 2 : 6);
    const std::string from = path(number);
    if (moved.folder != none && isBelow(moved.folder, number))
        return {};
    const std::string to = placeOf(moved);
    if (from == to)
        return {};
    if (moved.isHidden)
        std::filesystem::create_directories(std::string(parentPath(to)));
    const std::string step = "move " + shown(number);
    std::filesystem::rename(from, to);
    if (m_items[number].isHidden)
        ::rmdir(std::string(parentPath(from)).c_str()); // unless others are left in there
    m_items[number] = std::move(moved);
    return step + " to " + shown(number);
}

std::string WorldModel::exchangeByHand(Choices& choices) {
    const Number one = choices.below(m_items.size()), other = choices.below(m_items.size());
    const std::string first = path(one), second = path(other), aside = joinPath(m_root, "aside");
    if (parentPath(first) != parentPath(second))
        return {};
    const std::string step = "exchange " + shown(one) + " and " + shown(other);
    std::filesystem::rename(first, aside);
    if (one != other)
        std::filesystem::rename(second, first);
    std::filesystem::rename(aside, second);
    std::swap(m_items[one].names[m_items[one].name], m_items[other].names[m_items[other].name]);
    return step;
}

std::string WorldModel::difference() const {
    std::map<std::string, ItemState> expected;
    std::set<std::string> hiddenDirectories;
    for (Number item = 0; item < m_items.size(); ++item) {
        const std::string below = path(item).substr(m_root.size() + 1);
        expected[below] = m_items[item].state;
        if (m_items[item].isHidden)
            hiddenDirectories.emplace(parentPath(below));
    }
    std::string text;
    for (const auto& [path, state] : snapshotOf(m_root)) {
        const auto item = expected.find(path);
        if (item == expected.end() && !path.empty() && !hiddenDirectories.contains(path))
            text += "not ours: " + printableName(path) + "\n";
        if (item != expected.end() && item->second != lastingState(state))
            text += "changed: " + printableName(path) + "\n";
        if (item != expected.end())
            expected.erase(item);
    }
    for (const auto& [path, state] : expected)
        text += "not there: " + printableName(path) + "\n";
    return text;
}

} // namespace veilkeep::test

#pragma once

#include "tests/support/ItemSnapshot.h"

#include <cstddef>
#include <random>
#include <string>
#include <vector>

namespace veilkeep::test {

// Choices that are the same again for the same seed, on every machine.
class Choices {
public:
    explicit Choices(unsigned int seed) : m_engine(seed) {}

    std::size_t below(std::size_t count) { return m_engine() % count; }
    bool oneIn(std::size_t count) { return below(count) == 0; }

private:
    std::mt19937 m_engine;
};

// What the disk should hold below a folder: files, links and folders, nested, some hidden, with names that no
// other item ever has. They are known by number and, whatever their path, by inode and content.
class WorldModel {
public:
    using Number = std::size_t;

    WorldModel(std::string root, Choices& choices); // makes the items

    Number count() const { return m_items.size(); }
    const std::string& root() const { return m_root; }
    std::string path(Number item) const;
    std::string originalPath(Number item) const;
    std::string shown(Number item) const; // its path below the root, for the list of steps
    bool isHiddenItself(Number item) const { return m_items[item].isHidden; }
    bool isHidden(Number item) const;            // itself, or by a folder above
    Number withInode(std::uint64_t inode) const; // count() where there is none

    // What hiding and bringing back did.
    void setHidden(Number item, bool isHidden) { m_items[item].isHidden = isHidden; }

    // After what may have hidden items or brought them back, each or not: as the disk says.
    void seeWhatIsHidden();

    // Renames one item on the disk as a user would, wherever it lies, to one of its names in any folder,
    // plain or hidden. Answers what was done; nothing where the choice fell on a place that it cannot go to.
    std::string moveByHand(Choices& choices);

    // The same with two items in one folder, which get each other's names.
    std::string exchangeByHand(Choices& choices);

    // How the disk is not what it should be; empty where it is.
    std::string difference() const;

private:
    static constexpr Number none = SIZE_MAX; // the root's

    struct Item {
        std::vector<std::string> names;
        std::size_t name = 0; // which of them
        Number folder = none;
        bool isFolder = false;
        bool isHidden = false;
        ItemState state = {};
    };

    void make(Item item, const std::string& content);
    Number chooseFolder(Choices& choices) const;
    bool isBelow(Number item, Number folder) const;
    std::string placeOf(const Item& item) const;
    std::size_t depthOf(Number item) const;
    bool isAtItsPlace(Number item) const;

    std::string m_root;
    std::vector<Item> m_items;
};

} // namespace veilkeep::test

#pragma once

#include "groups/GroupViewController.h"
#include "tests/support/ListWorld.h"

#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace veilkeep::test {

// An image's bytes are its name.
class NamedImages : public GroupImages {
public:
    std::optional<Bytes> imageNamed(std::string_view name) const override {
        return names.contains(name) ? std::optional(Bytes{name}) : std::nullopt;
    }
    std::optional<Bytes> imageAtPath(std::string_view path) const override {
        const std::string file(path), content = exists(file) ? readFile(file) : std::string();
        return content.empty() ? std::nullopt : std::optional(Bytes{content});
    }
    std::optional<Bytes> imageIn(std::string_view content) const override {
        return content.empty() ? std::nullopt : std::optional(Bytes{content});
    }
    std::set<std::string, std::less<>> names = {"folder-documents_alt", "folder-pictures", "folder_private",
                                                "folder-generic.png"};
};

// The groups with all that they work with, started, in a scratch home. Made anew it is the next start.
struct GroupWorld {
    explicit GroupWorld(ListWorldOptions options = {}, bool withImages = true)
        : list(withSelection(options, selection)),
          groups(
              {file, *list.list, selection, mark, list.alerts, list.turns, withImages ? &images : nullptr}) {}

    // With what the groups' file is to bring; alerts are expected before.
    GroupWorld& started() {
        groups.start();
        return *this;
    }

    ListedGroup row(std::size_t number) const { return groups.groups()[number]; }
    ListedGroup autoHideGroup() {
        const ListedGroup group = groups.addGroup();
        groups.setAutoHide(true, group);
        return group;
    }
    ListedFile add(const std::string& path, const ListedGroup& group) {
        const ListedFile added = list.add(path);
        list.list->moveFiles({added}, *group->groupID());
        return added;
    }
    void expectRemoval(
        const ListedGroup& group, const QString& answer = "Remove", std::function<void()> whileOpen = [] {}) {
        list.presenter.expect({.title = QString("Are you sure you want to remove \"%1\" group?")
                                            .arg(QString::fromStdString(std::string(group->name()))),
                               .answer = answer,
                               .message = "All files of this group will be moved to the \"All Files\" group.",
                               .buttons = QStringList{"Remove", "Cancel"},
                               .style = Alert::Style::Critical,
                               .whileOpen = std::move(whileOpen)});
    }
    std::vector<std::string> names() const {
        std::vector<std::string> all;
        for (const ListedGroup& group : groups.groups())
            all.emplace_back(group->name());
        return all;
    }
    static std::string dataPath() { return OwnPlaces::current().dataDirectory + "/GroupsInfo.Veilkeep"; }
    static void forgetAll() { std::filesystem::remove_all(OwnPlaces::current().dataDirectory); }
    static std::vector<std::string> savedNames() {
        std::vector<std::string> names;
        for (const Group& group : GroupsInfoFile(dataPath()).load().groups.value_or(std::vector<Group>()))
            names.emplace_back(group.name());
        return names;
    }

    GroupSelection selection;
    ListWorld list;
    GroupsInfoFile file{dataPath()};
    AutoHideMark mark{OwnPlaces::current().dataDirectory};
    NamedImages images;
    GroupViewController groups;

private:
    static ListWorldOptions withSelection(ListWorldOptions options, const GroupSelection& selection) {
        options.groups = &selection;
        return options;
    }
};

} // namespace veilkeep::test

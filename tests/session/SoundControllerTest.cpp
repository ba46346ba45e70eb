#include "session/SoundController.h"

#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <vector>

namespace veilkeep::test {
namespace {

class NotingPlayer : public SoundPlayer {
public:
    void play(const std::string& path) override { played.push_back(path); }

    std::vector<std::string> played;
};

TEST(SoundControllerTest, PlaysTheSoundsThatAreThereWhereTheUserWantsThem) {
    const ScratchTree tree;
    const std::string folder = tree.makeDirectory("sounds");
    for (const char* const file : {"sounds/drop.aif", "sounds/hideUnhide.aif", "sounds/autohide.aif"})
        tree.makeFile(file);
    UserDefaults defaults;
    NotingPlayer player;
    SoundController sounds(folder, defaults, player);
    EXPECT_EQ(UserDefaults().boolean("PlaySounds"), true);
    const auto playAll = [&] {
        for (const char* const key :
             {"DropSound", "HideSound", "PanelSound", "AutoHideSound", "NoSound", "DropSound"})
            sounds.playSound(key);
    };
    playAll();
    const std::vector<std::string> all{folder + "/drop.aif", folder + "/hideUnhide.aif",
                                       folder + "/autohide.aif", folder + "/drop.aif"};
    EXPECT_EQ(player.played, all);
    defaults.set("PlaySounds", false);
    playAll();
    EXPECT_EQ(player.played, all);
    defaults.set("PlaySounds", "of another kind");
    sounds.playSound("DropSound");
    EXPECT_EQ(player.played.size(), all.size() + 1);
}

} // namespace
} // namespace veilkeep::test

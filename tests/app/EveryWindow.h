#pragma once

#include "tests/app/AppWorld.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace veilkeep::test {

// Brings up each window of the application in turn, in the states that look different, with made-up items. Of
// a world that has started.
class EveryWindow {
public:
    using Look = std::function<void(const std::string& name, QWidget& window)>;

    EveryWindow(AppWorld& world, Look look) : m_world(world), m_look(std::move(look)) {}

    void lookAtAll();
    void fillList(); // items in all states, groups
    void lookAtMainWindow();
    void lookAtQuickPreview();
    void lookAtAlerts();
    void lookAtPanels();
    void lookAtPreferences();
    void lookAtGroupSheet();
    void lookAtMenus();

private:
    void look(const std::string& name, QWidget& window);
    void show(const std::string& name, QWidget& window); // and looks
    void preview(const std::string& name, const std::vector<std::string>& files);
    void select(const std::vector<std::string>& files);
    std::string path(const std::string& name) const;

    AppWorld& m_world;
    const Look m_look;
};

std::string drawnPicture(int number); // a PNG: hills under a sky

} // namespace veilkeep::test

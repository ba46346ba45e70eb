#pragma once

#include "tests/app/process/Screen.h"
#include "tests/support/BackgroundProgram.h"
#include "tests/support/RunProgram.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/WaitUntil.h"
#include "tests/support/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <QString>
#include <QVariantList>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veilkeep::test {

const ScratchTree& processScratch(); // of the ordinary user that this process is

// The desktop application as a process of its own, on the test's display and in its scratch home, run by an
// ordinary user; with a session bus unless a test takes it away.
class ProcessWorld : public ::testing::Test {
protected:
    static constexpr const char* password = "abc";

    void SetUp() override;

    void start(const std::vector<std::string>& arguments = {});
    std::optional<Screen::Window> startToWindow(const std::vector<std::string>& arguments = {});
    ProgramRun run(std::vector<std::string> arguments) const; // another start, to its end
    int end(int signal) { return m_application->end(signal); }
    pid_t process() const { return m_application->process(); }
    std::size_t windowCount() const { return m_screen.windowsOf(process()).size(); }
    std::optional<Screen::Window> window() const { return m_screen.waitForWindow(); }

    static ProgramRun ctl(std::vector<std::string> arguments);
    static std::string listed(); // what "veilkeepctl list" prints
    static bool becomesListed(const std::string& text);
    static bool isLogged(const std::string& text);
    static void setPassword();
    static void setOffersToInstall(bool offers); // on quitting, as a build tree's copy does
    static QString call(const QString& method, const QVariantList& arguments); // the error's name, if any

    void stopSessionBus() { m_bus.reset(); }

    const ScratchTree& m_tree = processScratch();
    std::optional<PrivateBus> m_bus{std::in_place, m_tree, PrivateBus::Place::Session};
    Screen m_screen;
    std::unique_ptr<BackgroundProgram> m_application;
};

} // namespace veilkeep::test

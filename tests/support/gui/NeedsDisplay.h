#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace veilkeep::test {

// Skips all tests of a program, with the reason, where the display that they need could not be made.
class NeedsDisplay : public ::testing::Environment {
public:
    explicit NeedsDisplay(std::string trouble) : m_trouble(std::move(trouble)) {}

    void SetUp() override {
        if (!m_trouble.empty())
            GTEST_SKIP() << m_trouble;
    }

private:
    std::string m_trouble;
};

} // namespace veilkeep::test

#pragma once

#include "core/records/PropertyDictionary.h"

#include <string>

namespace veilkeep {

// What a bundle's "Contents/Info.plist" says of the program in it, as it was when it was read.
class BundleInfo {
public:
    // A list that cannot be read counts as empty, with a line in the log.
    static BundleInfo ofBundle(const std::string& bundle);
    static const BundleInfo& main(); // of the running program, read on first use

    std::string name() const { return text("CFBundleName"); }
    std::string executable() const { return text("CFBundleExecutable"); }
    std::string identifier() const { return text("CFBundleIdentifier"); }
    std::string version() const { return text("CFBundleVersion"); }
    std::string longVersion() const; // "CFBundleLongVersionString", where there is none version()
    bool isUIElement() const;        // "LSUIElement": a program without an entry in the taskbar

private:
    explicit BundleInfo(PropertyDictionary properties) : m_properties(std::move(properties)) {}
    std::string text(PropertyKey key) const;

    PropertyDictionary m_properties;
};

} // namespace veilkeep

#include "core/storage/BundleInfo.h"

#include "core/environment/Bundle.h"
#include "core/filesystem/ReadWholeFile.h"
#include "core/log/Log.h"
#include "core/storage/PropertyList.h"

namespace veilkeep {

BundleInfo BundleInfo::ofBundle(const std::string& bundle) {
    const auto bytes = readWholeFile(bundle + "/Contents/Info.plist", maximumPropertyListSize);
    const auto parsed = bytes ? parsePropertyList(*bytes) : Result<PropertyDictionary>(bytes.error());
    if (!parsed)
        logError("What the program is cannot be read", parsed.error());
    return BundleInfo(parsed ? *parsed : PropertyDictionary());
}

const BundleInfo& BundleInfo::main() {
    static const BundleInfo info = ofBundle(applicationBundlePath());
    return info;
}

std::string BundleInfo::text(PropertyKey key) const {
    const Value* const found = m_properties.find(key);
    const auto text = found ? found->asString() : std::nullopt;
    return text ? std::string(*text) : std::string();
}

std::string BundleInfo::longVersion() const {
    const std::string found = text("CFBundleLongVersionString");
    return found.empty() ? version() : found;
}

bool BundleInfo::isUIElement() const {
    const Value* const found = m_properties.find("LSUIElement");
    return found && found->asBoolean().value_or(false);
}

} // namespace veilkeep

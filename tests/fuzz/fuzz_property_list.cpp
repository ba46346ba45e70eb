// Property lists from nowhere: the input as a document, and as a text and as bytes to be written in one.
#include "core/storage/PropertyList.h"
#include "tests/fuzz/Require.h"

#include <cstddef>
#include <cstdint>

namespace {

using namespace veilkeep;

PropertyDictionary writtenAndRead(const PropertyDictionary& dictionary) {
    const Result<std::string> xml = writePropertyList(dictionary);
    if (!xml && xml.error().code == ErrorCode::TooLarge)
        return dictionary;
    test::require(xml.has_value(), "what was read can be written");
    Result<PropertyDictionary> read = parsePropertyList(*xml);
    test::require(read.has_value(), "what was written can be read");
    test::require(*writePropertyList(*read) == *xml, "writing again gives the same bytes");
    return std::move(*read);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    if (const Result<PropertyDictionary> read = parsePropertyList(input))
        test::require(writtenAndRead(*read).size() == read->size(), "no key is lost");

    const PropertyDictionary values = writtenAndRead({{"text", input}, {"bytes", Bytes{input}}});
    test::require(values.find("text")->asString() == std::string_view(input), "text keeps its bytes");
    test::require(*values.find("bytes") == Value(Bytes{input}), "bytes stay bytes");
    return 0;
}

#include "core/storage/CborReader.h"

#include <cbor.h>

namespace veilkeep {
namespace {

using Kind = CborItem::Kind;

CborItem& itemOf(void* context) {
    return *static_cast<CborItem*>(context);
}

template <Kind kind, class Number>
void takeNumber(void* context, Number number) {
    itemOf(context).kind = kind;
    itemOf(context).number = number;
}

template <Kind kind>
void takeText(void* context, cbor_data data, std::size_t size) {
    itemOf(context).kind = kind;
    itemOf(context).text = {reinterpret_cast<const char*>(data), size};
}

template <class Number>
void takeReal(void* context, Number real) {
    itemOf(context).kind = Kind::Real;
    itemOf(context).real = static_cast<double>(real);
}

void takeBoolean(void* context, bool flag) {
    itemOf(context).kind = Kind::Boolean;
    itemOf(context).number = flag ? 1 : 0;
}

void takeNull(void* context) {
    itemOf(context).kind = Kind::Null;
}

// The callbacks that are not set do nothing, which leaves the item Unreadable.
cbor_callbacks makeCallbacks() {
    cbor_callbacks callbacks = cbor_empty_callbacks;
    callbacks.uint8 = takeNumber<Kind::Unsigned, std::uint8_t>;
    callbacks.uint16 = takeNumber<Kind::Unsigned, std::uint16_t>;
    callbacks.uint32 = takeNumber<Kind::Unsigned, std::uint32_t>;
    callbacks.uint64 = takeNumber<Kind::Unsigned, std::uint64_t>;
    callbacks.negint8 = takeNumber<Kind::Negative, std::uint8_t>;
    callbacks.negint16 = takeNumber<Kind::Negative, std::uint16_t>;
    callbacks.negint32 = takeNumber<Kind::Negative, std::uint32_t>;
    callbacks.negint64 = takeNumber<Kind::Negative, std::uint64_t>;
    callbacks.byte_string = takeText<Kind::Bytes>;
    callbacks.string = takeText<Kind::Text>;
    callbacks.array_start = takeNumber<Kind::List, std::size_t>;
    callbacks.map_start = takeNumber<Kind::Map, std::size_t>;
    callbacks.float2 = takeReal<float>;
    callbacks.float4 = takeReal<float>;
    callbacks.float8 = takeReal<double>;
    callbacks.boolean = takeBoolean;
    callbacks.null = takeNull;
    return callbacks;
}

} // namespace

CborItem CborReader::next() {
    static const cbor_callbacks callbacks = makeCallbacks();
    CborItem item;
    const auto* data = reinterpret_cast<const unsigned char*>(m_rest.data());
    const cbor_decoder_result result = cbor_stream_decode(data, m_rest.size(), &callbacks, &item);
    if (result.status != CBOR_DECODER_FINISHED)
        return {};
    m_rest.remove_prefix(result.read);
    return item;
}

} // namespace veilkeep

#include "widgets/preview/QuickContent.h"

#include "format/ValueFormatting.h"

#include <utility>

#include <QMimeDatabase>
#include <QStringDecoder>

namespace veilkeep {
namespace {

constexpr qint64 mostTextBytes = qint64{256} << 10;

bool isText(const ItemType& type) {
    return type.family != ItemType::Family::Folder &&
           QMimeDatabase().mimeTypeForName(type.mimeType).inherits(QStringLiteral("text/plain"));
}

// The bytes that begin a character whose rest was cut off.
qsizetype lengthOfCutCharacter(const QByteArray& bytes) {
    for (qsizetype length = 1; length <= 3 && length <= bytes.size(); ++length) {
        const auto byte = static_cast<unsigned char>(bytes[bytes.size() - length]);
        if ((byte & 0xc0U) != 0x80U) // no continuation
            return byte >= 0xc0U ? length : 0;
    }
    return 0;
}

QString decodedText(const QByteArray& bytes, bool isCut) {
    QByteArray whole = bytes;
    if (isCut)
        whole.chop(lengthOfCutCharacter(bytes));
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = utf8(whole);
    return utf8.hasError() ? QString::fromLatin1(bytes) : text;
}

void readText(QuickContent& content, const OpenedItem& item, const WorkStop& stop) {
    StoppableFile file(item.descriptor(), stop);
    const QByteArray bytes = file.read(mostTextBytes);
    content.isCut = file.size() > bytes.size();
    content.text = decodedText(bytes, content.isCut);
    content.text.replace(QChar(0), QChar(QChar::ReplacementCharacter));
    content.kind = QuickContent::Kind::Text;
}

} // namespace

QuickContent quickContentOf(const PreviewSubject& subject, const PreviewMaker& maker, const ImageWish& wish,
                            const WorkStop& stop) {
    const OpenedItem item(subject.path);
    QuickContent content;
    content.type = typeOf(subject, item, stop);
    if (item.kind() == OpenedItem::Kind::Missing) {
        content.kind = QuickContent::Kind::Missing;
        return content;
    }
    content.modified = ModificationDateValueTransformer::transformedValue(subject.path);
    content.created = CreationDateValueTransformer::transformedValue(subject.path);
    if (item.kind() == OpenedItem::Kind::Folder)
        content.entries = numberOfEntriesAt(subject.path);
    DecodedImage decoded = maker.imageOf(subject, item, content.type, wish, stop);
    content.image = std::move(decoded.image);
    content.page = wish.page;
    content.pages = decoded.pages;
    if (content.image.isNull()) {
        if (item.descriptor() >= 0 && isText(content.type))
            readText(content, item, stop);
    } else if (content.type.family != ItemType::Family::Audio &&
               content.type.family != ItemType::Family::Video) {
        content.kind = QuickContent::Kind::Image;
    }
    return content;
}

} // namespace veilkeep

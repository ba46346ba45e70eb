#include "widgets/preview/SelfContainedSvg.h"

#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace veilkeep {
namespace {

constexpr int mostDepth = 500;

bool leadsToOtherFile(const QXmlStreamAttribute& attribute) {
    const QStringView target = attribute.value().trimmed();
    return attribute.qualifiedName().endsWith(QLatin1String("href"), Qt::CaseInsensitive) &&
           !target.startsWith(QLatin1Char('#')) && !target.startsWith(QLatin1String("data:"));
}

void copyElement(const QXmlStreamReader& reader, QXmlStreamWriter& writer) {
    writer.writeStartElement(reader.qualifiedName().toString());
    for (const QXmlStreamAttribute& attribute : reader.attributes())
        if (!leadsToOtherFile(attribute))
            writer.writeAttribute(attribute.qualifiedName().toString(), attribute.value().toString());
}

} // namespace

// Instructions, which name style sheets, and the document type are left out.
QByteArray selfContainedSvg(const QByteArray& svg) {
    QByteArray copy;
    QXmlStreamReader reader(svg);
    reader.setNamespaceProcessing(false);
    QXmlStreamWriter writer(&copy);
    int depth = 0;
    while (!reader.atEnd() && depth <= mostDepth) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::StartElement) {
            ++depth;
            copyElement(reader, writer);
        } else if (token == QXmlStreamReader::EndElement) {
            --depth;
            writer.writeEndElement();
        } else if (token == QXmlStreamReader::Characters) {
            writer.writeCharacters(reader.text().toString());
        }
    }
    return reader.hasError() || depth != 0 ? QByteArray() : copy;
}

} // namespace veilkeep

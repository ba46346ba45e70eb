#include "platform/linux/filemanagers/ThunarActions.h"

#include <QXmlStreamReader>

namespace veilkeep {
namespace {

constexpr QLatin1String ownIdentifier("com.ostrel.Veilkeep.");

bool isUtf8(QStringView encoding) {
    return encoding.isEmpty() || encoding.compare(QLatin1String("UTF-8"), Qt::CaseInsensitive) == 0;
}

} // namespace

// Notes where ours begin and end. The reader stands behind the tag or comment that it read last, and none of
// these holds a "<" but its first.
class ThunarActions::Reader {
public:
    explicit Reader(ThunarActions& actions) : m_actions(actions), m_xml(actions.m_text) {}

    bool read() {
        while (!m_xml.atEnd())
            readNext();
        return !m_xml.hasError() && m_isList && m_hasEndTag && m_isUtf8;
    }

private:
    void readNext() {
        switch (m_xml.readNext()) {
        case QXmlStreamReader::StartDocument:
            m_isUtf8 = isUtf8(m_xml.documentEncoding());
            break;
        case QXmlStreamReader::StartElement:
            startElement();
            break;
        case QXmlStreamReader::EndElement:
            endElement();
            --m_depth;
            break;
        case QXmlStreamReader::Comment:
            comment();
            break;
        case QXmlStreamReader::Characters:
            m_text += m_xml.text();
            break;
        default: // of Qt's; nothing to note
            break;
        }
    }

    void startElement() {
        ++m_depth;
        if (m_depth == 1)
            m_isList = m_xml.name() == QLatin1String("actions");
        if (m_depth == 2) {
            m_begin = begin();
            m_identifier.clear();
            m_command.clear();
        }
        m_text.clear();
    }

    void endElement() {
        if (m_depth == 3 && m_xml.name() == QLatin1String("unique-id"))
            m_identifier = m_text;
        if (m_depth == 3 && m_xml.name() == QLatin1String("command"))
            m_command = m_text;
        if (m_depth == 2 && m_identifier.startsWith(ownIdentifier)) {
            m_actions.m_commands[m_identifier] = m_command;
            take(m_begin);
        }
        if (m_depth == 1) {
            m_actions.m_end = begin();
            m_hasEndTag = QStringView(m_actions.m_text).mid(begin()).startsWith(QLatin1String("</"));
        }
    }

    void comment() {
        const auto mark = EntryMark::ofText(m_xml.text().trimmed().toString().toStdString());
        if (m_depth != 1 || !mark)
            return;
        m_actions.m_mark = mark;
        take(m_actions.m_text.lastIndexOf(QLatin1String("<!--"), m_xml.characterOffset() - 1));
    }

    qsizetype begin() const {
        return m_actions.m_text.lastIndexOf(QLatin1Char('<'), m_xml.characterOffset() - 1);
    }

    // With the end of its line.
    void take(qsizetype begin) {
        qsizetype end = m_xml.characterOffset();
        if (end < m_actions.m_text.size() && m_actions.m_text.at(end) == QLatin1Char('\n'))
            ++end;
        m_actions.m_ours.emplace_back(begin, end);
    }

    ThunarActions& m_actions;
    QXmlStreamReader m_xml;
    int m_depth = 0;
    bool m_isList = false, m_hasEndTag = false, m_isUtf8 = true;
    qsizetype m_begin = 0; // of the action
    QString m_text, m_identifier, m_command;
};

Result<ThunarActions> ThunarActions::parse(const std::string& text) {
    ThunarActions actions;
    actions.m_text = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    if (actions.m_text.toStdString() != text || !Reader(actions).read())
        return Error::damaged("parse");
    return actions;
}

std::string ThunarActions::without() const {
    QString rest = m_text;
    for (auto ours = m_ours.rbegin(); ours != m_ours.rend(); ++ours)
        rest.remove(ours->first, ours->second - ours->first);
    return rest.toStdString();
}

std::string ThunarActions::with(const std::string& actions, const EntryMark& mark) const {
    const QString added = QString::fromStdString("<!-- " + mark.text() + " -->\n" + actions);
    QString text = m_text;
    text.insert(m_end, added);
    for (auto ours = m_ours.rbegin(); ours != m_ours.rend(); ++ours)
        text.remove(ours->first, ours->second - ours->first);
    return text.toStdString();
}

} // namespace veilkeep

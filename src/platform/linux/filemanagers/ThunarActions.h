#pragma once

#include "core/base/Result.h"
#include "platform/linux/filemanagers/EntryMark.h"

#include <QString>

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace veilkeep {

// The text of Thunar's "uca.xml", in which our actions stand among the user's. All but ours stays as it is,
// to the byte.
class ThunarActions {
public:
    // Damaged where it is no such list, or is not written in UTF-8.
    static Result<ThunarActions> parse(const std::string& text);

    std::map<QString, QString> commands() const { return m_commands; } // of ours, by their identifiers
    const std::optional<EntryMark>& mark() const { return m_mark; }    // Thunar drops it when it saves

    std::string without() const;                                               // ours
    std::string with(const std::string& actions, const EntryMark& mark) const; // in the place of ours

private:
    using Range = std::pair<qsizetype, qsizetype>; // begin and end

    class Reader;

    QString m_text;
    std::vector<Range> m_ours; // in their order
    qsizetype m_end = 0;       // of the list, in front of its end tag
    std::map<QString, QString> m_commands;
    std::optional<EntryMark> m_mark;
};

} // namespace veilkeep

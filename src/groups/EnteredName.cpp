#include "groups/EnteredName.h"

#include "filelist/Texts.h"
#include "groups/GroupNames.h"

#include <algorithm>

namespace veilkeep {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(GroupEdit)
};

bool isControl(QChar character) {
    return character.category() == QChar::Other_Control || character == QChar::LineSeparator ||
           character == QChar::ParagraphSeparator;
}

bool isOneLine(const QString& text) {
    return std::ranges::none_of(text, isControl);
}

// Rows that look the same cannot be told from each other, so what is shown counts as well.
bool isTaken(const GroupViewController& groups, const Group& group, const std::string& name,
             const QString& typed) {
    return std::ranges::any_of(groups.groups(), [&](const ListedGroup& other) {
        return other.get() != &group && (other->name() == name || EnteredName::editableName(*other) == typed);
    });
}

} // namespace

// What is shown escaped for safety's sake alone, such as joined emoji, is edited as it is.
QString EnteredName::editableName(const Group& group) {
    const QString shown = shownGroupName(group);
    const QString plain = QString::fromStdString(std::string(group.name()));
    const bool isGiven = shown != shownPath(group.name());
    const bool isText = plain.toStdString() == group.name() && isOneLine(plain);
    return isText && !isGiven ? plain : shown;
}

EnteredName::EnteredName(const GroupViewController& groups, const Group& group, const QString& typed)
    : name(typed.toStdString()) {
    if (typed == editableName(group) || name == group.name())
        name = std::string(group.name());
    else if (isTaken(groups, group, name, typed))
        fault = Fault::Taken;
    else if (typed.trimmed().isEmpty())
        fault = Fault::Empty;
    else if (typed.size() > longest)
        fault = Fault::TooLong;
    else if (!isOneLine(typed))
        fault = Fault::NotOneLine;
}

QString EnteredName::faultText(Fault fault) {
    switch (fault) {
    case Fault::Empty:
        return Texts::tr("A group needs a name.");
    case Fault::TooLong:
        return Texts::tr("This name is too long: %1 characters are the most.").arg(longest);
    case Fault::NotOneLine:
        return Texts::tr("The name of a group is one line of text.");
    case Fault::Taken:
        return Texts::tr("A group with this name exists already.");
    }
    return {};
}

} // namespace veilkeep

#include "filelist/FilePredicate.h"

#include <QStringList>

namespace veilkeep {

QString FilePredicate::text() const {
    QStringList conditions;
    if (state)
        conditions << QString("(properties.State = %1)").arg(*state);
    if (groupID)
        conditions << QString("(properties.GroupID = %1)").arg(*groupID);
    if (!nameSearch.isEmpty())
        conditions << QString("(properties.Name like[c] '*%1*')").arg(nameSearch);
    return conditions.join(" and ");
}

} // namespace veilkeep

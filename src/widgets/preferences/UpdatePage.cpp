#include "widgets/preferences/UpdatePage.h"

#include "filelist/Texts.h"
#include "widgets/preferences/SettingRows.h"

#include <QLabel>
#include <QPushButton>

namespace veilkeep {
namespace {

QLabel* valueLabel(const char* name) {
    auto* const label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setObjectName(QString::fromLatin1(name));
    return label;
}

} // namespace

UpdatePage::UpdatePage(PrefsControls& controls) {
    SettingRows rows(*this, controls);
    const auto addValue = [&](PrefsText text, const QString& heading, const char* name) {
        QLabel* const value = valueLabel(name);
        controls.texts.emplace(text, value);
        rows.beginSection(heading);
        rows.add(value);
    };
    addValue(PrefsText::CurrentVersionText, tr("Version of %1:").arg(applicationName()),
             "currentVersionText");
    addValue(PrefsText::LastCheckDateText, tr("Last check:"), "lastCheckDateText");
    auto* const check = new QPushButton(tr("Check Now"));
    check->setAutoDefault(false);
    connect(check, &QPushButton::clicked, this, &UpdatePage::checkNowClicked);
    rows.beginSection({});
    rows.add(check);
}

} // namespace veilkeep

#include "widgets/preferences/UpdatePage.h"

#include "filelist/Texts.h"
#include "widgets/preferences/SettingRows.h"

#include <QLabel>
#include <QPushButton>

namespace veilkeep {
namespace {

QLabel* valueLabel(const QString& name) {
    auto* const label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setAccessibleName(name);
    return label;
}

} // namespace

UpdatePage::UpdatePage(PrefsControls& controls) {
    SettingRows rows(*this, controls);
    const auto addValue = [&](PrefsText text, const QString& heading, const QString& name) {
        QLabel* const value = valueLabel(name);
        controls.texts.emplace(text, value);
        rows.beginSection(heading);
        rows.add(value);
    };
    addValue(PrefsText::CurrentVersionText, tr("Version of %1:").arg(applicationName()), tr("Version"));
    addValue(PrefsText::LastCheckDateText, tr("Last check:"), tr("Last check"));
    auto* const check = new QPushButton(tr("Check Now"));
    check->setAutoDefault(false);
    connect(check, &QPushButton::clicked, this, &UpdatePage::checkNowClicked);
    rows.beginSection({});
    rows.add(check);
}

} // namespace veilkeep

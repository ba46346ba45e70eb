#include "widgets/preferences/SecurityPage.h"

#include "filelist/Texts.h"
#include "widgets/preferences/SettingRows.h"

#include <QCheckBox>
#include <QPushButton>

namespace veilkeep {

SecurityPage::SecurityPage(PrefsControls& controls) {
    using enum PrefsBox;
    SettingRows rows(*this, controls);
    rows.beginSection(tr("Password:"));
    QCheckBox* const require =
        rows.addBox(RequirePasswordBox, tr("Require a password to open %1").arg(applicationName()));
    auto* const change = new QPushButton(tr("Set Password…"));
    change->setAutoDefault(false);
    connect(change, &QPushButton::clicked, this, &SecurityPage::changePasswordClicked);
    connect(require, &QCheckBox::toggled, change,
            [change](bool isOn) { change->setText(isOn ? tr("Change Password…") : tr("Set Password…")); });
    rows.add(change);
    rows.beginSection(tr("Hide AutoHide groups when…"));
    rows.addBox(HideOnSleepBox, tr("the computer goes to sleep"));
    rows.addBox(HideOnLockBox, tr("the screen is locked"));
    rows.addBox(HideOnSessionSwitchBox, tr("another user's session comes to the front"));
    rows.addBox(HideOnQuitBox, tr("%1 quits").arg(applicationName()));
}

} // namespace veilkeep

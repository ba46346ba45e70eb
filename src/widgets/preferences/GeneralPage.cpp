#include "widgets/preferences/GeneralPage.h"

#include "filelist/Texts.h"
#include "widgets/preferences/NoticeLine.h"
#include "widgets/preferences/SettingRows.h"

namespace veilkeep {

GeneralPage::GeneralPage(PrefsControls& controls) {
    using enum PrefsBox;
    SettingRows rows(*this, controls);
    rows.beginSection(tr("Start:"));
    rows.addBox(LoginItemCheckBox, tr("Launch %1 at login").arg(applicationName()));
    rows.beginSection(tr("Show:"));
    rows.addBox(ShowInDockBox, tr("%1 in the taskbar").arg(applicationName()));
    rows.addBox(ShowInMenuBarBox, tr("Icon in the panel"));
    auto* const warning =
        new NoticeLine(NoticeLine::Kind::Mind,
                       tr("%1 needs to be relaunched for this to take effect.").arg(applicationName()));
    QSizePolicy policy = warning->sizePolicy();
    policy.setRetainSizeWhenHidden(false);
    warning->setSizePolicy(policy);
    controls.texts.emplace(PrefsText::WarningAboutRestartText, warning);
    rows.add(warning, true);
    rows.beginSection(tr("File managers:"));
    rows.addBox(InstallFinderPluginBox,
                tr("“Hide with %1” and “Show in %1” in their menus").arg(applicationName()));
    rows.beginSection(tr("Items:"));
    rows.addBox(AllowPrivilidgedFilesBox, tr("Allow those that need administrator rights"));
    rows.addBox(CleanRecentItemsBox, tr("Remove their traces from lists of recent files while hiding"));
    rows.addBox(AskBeforeRemovingBox, tr("Ask before removing them from the list"));
    rows.beginSection(tr("Sounds:"));
    rows.addBox(PlaySoundsBox, tr("Play sounds"));
}

} // namespace veilkeep

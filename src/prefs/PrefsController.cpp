#include "prefs/PrefsController.h"

#include "core/log/Log.h"
#include "core/storage/DefaultsKeys.h"
#include "filelist/Texts.h"
#include "format/ValueFormatting.h"

#include <QLocale>

namespace veilkeep {
namespace {

constexpr struct {
    const char* identifier;
    PrefsPage page;
} pages[] = {
    {"TOOLBAR_GENERAL", PrefsPage::General},        {"TOOLBAR_UPDATE", PrefsPage::Update},
    {"TOOLBAR_SECURITY", PrefsPage::Security},      {"SET_PASSWORD", PrefsPage::SetPassword},
    {"CHANGE_PASSWORD", PrefsPage::ChangePassword}, {"ASK_PASSWORD", PrefsPage::AskPassword},
};

PrefsPage pageOf(const QString& identifier) {
    for (const auto& row : pages)
        if (identifier == QLatin1String(row.identifier))
            return row.page;
    return PrefsPage::General;
}

} // namespace

std::vector<PrefsItem> PrefsController::toolbarItems() {
    const auto item = [](const char* identifier, const QString& label) {
        return PrefsItem{QString::fromLatin1(identifier), label, QString::fromLatin1(identifier)};
    };
    return {item("TOOLBAR_GENERAL", tr("General")), item("TOOLBAR_SECURITY", tr("Security")),
            item("TOOLBAR_UPDATE", tr("Update"))};
}

std::optional<PrefsItem> PrefsController::itemForItemIdentifier(const QString& itemIdentifier) {
    for (const PrefsItem& item : toolbarItems())
        if (item.itemIdentifier == itemIdentifier)
            return item;
    return std::nullopt;
}

// --- The window and its pages ---

void PrefsController::awakeFromNib() {
    setSelectedTab(QStringLiteral("TOOLBAR_GENERAL"));
    m_view->setEnabled(PrefsBox::AllowPrivilidgedFilesBox, true);
    m_view->setEnabled(PrefsBox::LoginItemCheckBox, m_parts.loginItem != nullptr);
    m_view->setEnabled(PrefsBox::InstallFinderPluginBox, m_parts.setFinderPluginInstalled != nullptr);
    connect(this, &PrefsController::passwordProtectedChanged, this, [this](bool isProtected) {
        if (m_view)
            m_view->setOn(PrefsBox::RequirePasswordBox, isProtected);
    });
    showBoxes();
}

void PrefsController::windowDidLoad() {
    m_view->betterCenter();
}

void PrefsController::windowWillAppear() {
    m_view->showTrouble({});
    showBoxes();
    lastCheckChanged();
}

void PrefsController::windowWillClose() {
    if (const auto stored = m_parts.defaults.synchronize(); !isKept(stored))
        logError("The settings could not be stored", stored.error());
    const PrefsPage page = m_view->page();
    if (page != PrefsPage::General && page != PrefsPage::Update)
        showPage("TOOLBAR_SECURITY");
    forgetEntries();
}

void PrefsController::setSelectedTab(const QString& identifier) {
    m_view->installToolbar(identifier);
    setPrefView(itemForItemIdentifier(identifier));
}

void PrefsController::makeActiveTabWithIdentifier(const QString& identifier) {
    if (const auto item = itemForItemIdentifier(identifier))
        setPrefView(item);
}

void PrefsController::setPrefView(const std::optional<PrefsItem>& item) {
    const PrefsPage page = pageOf(item ? item->itemIdentifier : QString());
    if (page == PrefsPage::Update)
        m_view->setStringValue(PrefsText::CurrentVersionText,
                               QString::fromStdString(BundleInfo::main().version()));
    if (item && itemForItemIdentifier(item->itemIdentifier))
        m_view->selectItem(item->itemIdentifier);
    if (m_view->page() == page)
        return;
    m_view->showPage(page);
    forgetEntries();
    const auto selected = itemForItemIdentifier(m_view->selectedItemIdentifier());
    const bool hasLabel = item && !item->label.isEmpty(); // a window without a title helps nobody
    m_view->setTitle(hasLabel ? item->label : selected ? selected->label : QString());
}

void PrefsController::showPage(const char* identifier) {
    setPrefView(PrefsItem{QString::fromLatin1(identifier)});
}

void PrefsController::forgetEntries() {
    using enum PrefsField;
    empty({SetPasswordSecureField, SetConfirfmSecureField, ChangeOldPasswordSecureField,
           ChangeNewPasswordSecureField, ChangeConfirmSecureField, EnterPasswordSecureField});
}

// --- Settings ---

bool PrefsController::passwordProtected() const {
    return m_passwordManager && m_passwordManager->isPasswordEnabled();
}

// What the next start will find is what the box shows, and what the running program does not follow.
void PrefsController::setDockIconIsHidden(bool hidden) {
    UserDefaults& defaults = m_parts.defaults;
    if (hidden) {
        if (!defaults.contains(defaultsKey::showMenuIconOfOld))
            defaults.set(defaultsKey::showMenuIconOfOld, std::int64_t{1});
        defaults.set(defaultsKey::showMenuIcon, true);
    }
    if (const auto stored = m_parts.dockIcon.setShouldBeUIElement(hidden); !isKept(stored)) {
        defaults.discard(defaultsKey::showMenuIconOfOld);
        defaults.discard(defaultsKey::showMenuIcon);
        tell(tr("The setting could not be stored."), stored.error());
        return showBoxes();
    }
    if (hidden)
        m_view->setOn(PrefsBox::ShowInMenuBarBox, true);
    const bool needsRelaunch = dockIconIsHidden() != hidden;
    m_view->setHidden(PrefsText::WarningAboutRestartText, !needsRelaunch);
    if (needsRelaunch && m_parts.requestRelaunch)
        m_parts.requestRelaunch();
    if (hidden)
        showIconInMenuBarClick();
    m_view->setEnabled(PrefsBox::ShowInMenuBarBox, !isIconNeeded());
}

bool PrefsController::shouldLaunchAtLogin() const {
    return m_parts.loginItem && m_parts.loginItem->shouldLaunchAtLogin();
}

void PrefsController::setShouldLaunchAtLogin(bool launches) {
    if (!m_parts.loginItem)
        return;
    if (const auto set = m_parts.loginItem->setShouldLaunchAtLogin(launches); !set)
        tell(tr("Launching at login could not be changed."), set.error());
    m_view->setOn(PrefsBox::LoginItemCheckBox, shouldLaunchAtLogin());
}

bool PrefsController::finderPluginInstalled() const {
    return m_parts.finderPluginInstalled && m_parts.finderPluginInstalled();
}

void PrefsController::setFinderPluginInstalled(bool isWished) {
    if (m_parts.setFinderPluginInstalled)
        m_parts.setFinderPluginInstalled(isWished);
    m_view->setOn(PrefsBox::InstallFinderPluginBox, finderPluginInstalled());
}

bool PrefsController::needToCreateAutoHideExample() {
    if (m_parts.defaults.contains(defaultsKey::autoHideExample))
        return false;
    m_parts.defaults.set(defaultsKey::autoHideExample, std::int64_t{1});
    const auto stored = m_parts.defaults.synchronize();
    if (isKept(stored))
        return true;
    m_parts.defaults.discard(defaultsKey::autoHideExample);
    logError("That the example group was made is not stored", stored.error());
    return false;
}

bool PrefsController::showsMenuIcon() {
    if (const auto stored = m_parts.defaults.storeIfAbsent(defaultsKey::showMenuIcon, true); !stored)
        logError("That the icon is shown is not stored", stored.error());
    return dockIconIsHidden() || m_boxes.isOn(PrefsBox::ShowInMenuBarBox);
}

// --- What the user does in the window ---

void PrefsController::boxClick(PrefsBox box) {
    m_view->showTrouble({});
    switch (box) {
    case PrefsBox::LoginItemCheckBox:
        return setShouldLaunchAtLogin(m_view->isOn(box));
    case PrefsBox::ShowInDockBox:
        return setDockIconIsHidden(!m_view->isOn(box));
    case PrefsBox::InstallFinderPluginBox:
        return setFinderPluginInstalled(m_view->isOn(box));
    case PrefsBox::RequirePasswordBox:
        return requirePasswordClick();
    case PrefsBox::ShowInMenuBarBox:
        settingClick(box);
        return showIconInMenuBarClick();
    case PrefsBox::AllowPrivilidgedFilesBox:
    case PrefsBox::PlaySoundsBox:
    case PrefsBox::AskBeforeRemovingBox:
    case PrefsBox::CleanRecentItemsBox:
    case PrefsBox::HideOnSleepBox:
    case PrefsBox::HideOnLockBox:
    case PrefsBox::HideOnSessionSwitchBox:
    case PrefsBox::HideOnQuitBox:
        return settingClick(box);
    }
}

void PrefsController::settingClick(PrefsBox box) {
    if (const auto stored = m_boxes.set(box, m_view->isOn(box)); !isKept(stored))
        tell(tr("The setting could not be stored."), stored.error());
    m_view->setOn(box, m_boxes.isOn(box));
}

void PrefsController::showIconInMenuBarClick() {
    const auto& ask = m_view->isOn(PrefsBox::ShowInMenuBarBox) ? m_delegate.setStatusBarItem
                                                               : m_delegate.removeStatusBarItem;
    if (ask)
        ask();
}

void PrefsController::checkNowClick() {
    if (m_parts.checkForUpdates)
        m_parts.checkForUpdates();
    lastCheckChanged();
}

// --- What the window says ---

void PrefsController::showBoxes() {
    using enum PrefsBox;
    for (const PrefsBox box :
         {ShowInMenuBarBox, AllowPrivilidgedFilesBox, PlaySoundsBox, AskBeforeRemovingBox,
          CleanRecentItemsBox, HideOnSleepBox, HideOnLockBox, HideOnSessionSwitchBox, HideOnQuitBox})
        m_view->setOn(box, m_boxes.isOn(box));
    const bool willBeHidden = m_parts.dockIcon.willBeUIElement();
    m_view->setOn(ShowInDockBox, !willBeHidden);
    m_view->setEnabled(ShowInMenuBarBox, !isIconNeeded());
    if (isIconNeeded())
        m_view->setOn(ShowInMenuBarBox, true);
    m_view->setHidden(PrefsText::WarningAboutRestartText, willBeHidden == dockIconIsHidden());
    m_view->setOn(LoginItemCheckBox, shouldLaunchAtLogin());
    m_view->setOn(InstallFinderPluginBox, finderPluginInstalled());
    m_view->setOn(RequirePasswordBox, passwordProtected());
}

void PrefsController::lastCheckChanged() {
    if (!m_view)
        return;
    const auto stored = m_parts.defaults.string(defaultsKey::lastUpdateCheck);
    const QDateTime checked = QDateTime::fromString(QString::fromStdString(stored.value_or("")), Qt::ISODate);
    m_view->setStringValue(PrefsText::LastCheckDateText,
                           checked.isValid() ? ModificationDateValueTransformer::text(checked.toLocalTime())
                                             : tr("Never"));
}

void PrefsController::tell(const QString& what, const Error& error) {
    logError(what.toStdString(), error);
    if (m_view)
        m_view->showTrouble(what + QLatin1Char(' ') + errorWithPath(error));
}

bool PrefsController::isKept(const Result<void>& stored) {
    if (!stored && stored.error().code == ErrorCode::NotDurable)
        logError("The settings are stored, but not safe from a power cut yet", stored.error());
    return stored || stored.error().code == ErrorCode::NotDurable;
}

bool PrefsController::store(std::initializer_list<const char*> keys) {
    const auto stored = m_parts.defaults.synchronize();
    if (isKept(stored))
        return true;
    for (const char* const key : keys)
        m_parts.defaults.discard(key);
    tell(tr("The setting could not be stored."), stored.error());
    return false;
}

} // namespace veilkeep

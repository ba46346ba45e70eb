#pragma once

#include "prefs/PrefsController.h"
#include "widgets/preferences/PrefsControls.h"

#include <QDialog>
#include <QVariantAnimation>

class QHBoxLayout;

namespace veilkeep {

class MessageBar;
class PageButton;
class PageHost;
class PasswordPage;

// The window of the preferences: a toolbar, and below it one page at a time. It decides nothing. Main thread.
class PrefsWindow : public QDialog, public PrefsView {
    Q_OBJECT

public:
    explicit PrefsWindow(PrefsController& controller); // not owned
    ~PrefsWindow() override;

    void reject() override; // closing in any way comes here

    // PrefsView
    void installToolbar(const QString& selectedItemIdentifier) override;
    QString selectedItemIdentifier() const override;
    void selectItem(const QString& itemIdentifier) override;
    PrefsPage page() const override { return m_page; }
    void showPage(PrefsPage page) override;
    void setTitle(const QString& title) override { setWindowTitle(title); }
    void betterCenter() override;
    bool isOn(PrefsBox box) const override;
    void setOn(PrefsBox box, bool isOn) override;
    void setEnabled(PrefsBox box, bool isEnabled) override;
    QString stringValue(PrefsField field) const override;
    void setStringValue(PrefsField field, const QString& text) override;
    void makeFirstResponder(PrefsField field) override;
    void setStringValue(PrefsText text, const QString& value) override;
    void setHidden(PrefsText text, bool isHidden) override;
    void showTrouble(const QString& trouble) override;
    using QDialog::setEnabled;
    using QDialog::setHidden;

protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void makePages();
    void connectBoxes();
    void assignMnemonics();
    QSize neededSize() const;
    void fit();
    void slideToFit();

    PrefsController& m_controller;
    PrefsControls m_controls;
    QWidget* m_toolbar;
    QHBoxLayout* m_toolbarRow;
    std::map<QString, PageButton*> m_items;
    MessageBar* m_trouble;
    PageHost* m_host;
    std::map<PrefsPage, QWidget*> m_pages;
    PrefsPage m_page = PrefsPage::None;
    QVariantAnimation* m_slide;
};

} // namespace veilkeep

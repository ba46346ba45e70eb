#pragma once

#include "platform/Applications.h"

#include <QDialog>

#include <optional>
#include <vector>

class QLineEdit;
class QListView;
class QPushButton;
class QSortFilterProxyModel;

namespace veilkeep {

// Has the user choose one of the installed applications, by its name. Made by OpenPanels; main thread.
class ApplicationPanel : public QDialog {
    Q_OBJECT

public:
    ApplicationPanel(const std::vector<InstalledApplication>& applications, QWidget* parent);

    std::optional<QString> chosen() const; // the identifier

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showMatches(const QString& text);
    void validate();

    QLineEdit* m_search;
    QListView* m_list;
    QSortFilterProxyModel* m_matches;
    QPushButton* m_choose;
};

} // namespace veilkeep

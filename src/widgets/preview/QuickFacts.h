#pragma once

#include "filelist/FileList.h"
#include "widgets/preview/QuickContent.h"

#include <QIcon>
#include <QWidget>

class QFormLayout;
class QLabel;

namespace veilkeep {

// What there is to say of an item of which nothing can be shown: its icon, or an image of it, and the facts.
// Main thread.
class QuickFacts : public QWidget {
    Q_OBJECT

public:
    explicit QuickFacts(QWidget* parent = nullptr);

    void setFacts(const File& file, const QIcon& icon, const QuickContent& content);
    void setMessage(const QString& message, const QIcon& icon); // instead of facts

    static QString sizeText(const File& file, const QuickContent& content);
    static QString stateText(const File& file);

private:
    void setIcon(const QIcon& icon, const QImage& image);
    void addFact(const QString& title, const QString& value);
    void clearFacts();

    QLabel* m_icon;
    QLabel* m_message;
    QFormLayout* m_facts;
};

} // namespace veilkeep

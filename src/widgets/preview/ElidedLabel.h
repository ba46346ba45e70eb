#pragma once

#include <QLabel>
#include <QString>

namespace veilkeep {

// One line of plain text whose middle gives way where there is no room for it. Main thread.
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    void setFullText(const QString& text); // read out whole

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void fit();

    QString m_fullText;
};

} // namespace veilkeep

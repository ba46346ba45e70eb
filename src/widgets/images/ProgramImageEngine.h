#pragma once

#include <QColor>
#include <QIconEngine>
#include <QString>

namespace veilkeep {

// Draws one of the program's images for exactly the pixels that are asked for, in its own colours or as a
// symbol in that of the application's palette. Owned by its QIcon; main thread.
class ProgramImageEngine : public QIconEngine {
public:
    enum class Colours { Own, OfText };

    ProgramImageEngine(QString name, Colours colours);

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QPixmap scaledPixmap(const QSize& pixels, QIcon::Mode mode, QIcon::State state, qreal scale) override;
    QIconEngine* clone() const override;
    QString key() const override;
    bool isNull() override;

    static QPixmap symbolPixmap(const QString& name, QSize size, qreal devicePixelRatio,
                                const QColor& colour);

private:
    QPixmap inMode(QSize size, qreal devicePixelRatio, QIcon::Mode mode) const;

    QString m_name;
    Colours m_colours;
};

} // namespace veilkeep

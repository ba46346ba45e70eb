#pragma once

#include <QLabel>

namespace veilkeep {

// A line that says what is wrong, in red that can be read on any ground, or what is to be minded. Hidden at
// first, with its place kept. Main thread.
class NoticeLine : public QLabel {
    Q_OBJECT

public:
    enum class Kind { Wrong, Mind };

    explicit NoticeLine(Kind kind, const QString& text = {}, QWidget* parent = nullptr);

    void tell(); // shows it, and has it read out

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Kind m_kind;
};

} // namespace veilkeep

#pragma once

#include <QTranslator>

namespace veilkeep::test {

// A language that no text of the program is shorter in: "Hide items" is "[Ḥịḍẹ ịṭẹṃṣ ~~~]". Only what the
// real translations have is translated, so that a text they cannot reach is found out.
class PseudoLanguage : public QTranslator {
public:
    PseudoLanguage();

    QString translate(const char* context, const char* text, const char* comment, int count) const override;
    bool isEmpty() const override { return false; }

    static QString pseudo(const QString& text);
};

} // namespace veilkeep::test

#include "tests/app/PseudoLanguage.h"

#include <gtest/gtest.h>

namespace veilkeep::test {
namespace {

QChar accented(QChar letter) {
    static const QString plain = QStringLiteral("adehilmnorstuwyADEHILMNORSTUWY");
    static const QString accents = QStringLiteral("ạḍẹḥịḷṃṇọṛṣṭụẉỵẠḌẸḤỊḶṂṆỌṚṢṬỤẈỴ");
    const qsizetype at = plain.indexOf(letter);
    return at < 0 ? letter : accents[at];
}

} // namespace

PseudoLanguage::PseudoLanguage() {
    EXPECT_TRUE(load(QStringLiteral(":/translations/veilkeep_de.qm")));
}

QString PseudoLanguage::translate(const char* context, const char* text, const char* comment,
                                  int count) const {
    return QTranslator::translate(context, text, comment, count).isEmpty() ? QString()
                                                                           : pseudo(QString::fromUtf8(text));
}

QString PseudoLanguage::pseudo(const QString& text) {
    QString made;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const bool isPlaceholder = at > 0 && (text[at - 1] == u'%' || text.mid(at - 2, 2) == u"%L");
        made += isPlaceholder ? text[at] : accented(text[at]);
    }
    const qsizetype longer = (text.size() * 2 + 4) / 5; // 40 %
    const QString more = QStringLiteral(" ~~~").repeated(longer / 4) + QString(longer % 4, u'~');
    return u'[' + made + more + u']';
}

} // namespace veilkeep::test

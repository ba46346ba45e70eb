#include "widgets/mainwindow/WindowPlace.h"

#include "format/WindowCentering.h"

#include <QStringList>

#include <algorithm>

namespace veilkeep {
namespace {

constexpr int largest = 32767; // what display servers take
constexpr QSize smallest{200, 100};
constexpr QSize toGrab{100, 20}; // of the upper edge

const QString maximizedWord = QStringLiteral("maximized");

QStringList wordsOf(std::string_view text) {
    constexpr std::string_view::size_type longest = 200;
    return QString::fromLatin1(text.data(), qsizetype(std::min(text.size(), longest)))
        .split(QLatin1Char(' '));
}

std::optional<QList<int>> numbersOf(const QStringList& words) {
    QList<int> numbers;
    for (const QString& word : words) {
        bool isNumber = false;
        numbers << word.toInt(&isNumber);
        if (!isNumber || std::abs(qint64{numbers.last()}) > largest)
            return std::nullopt;
    }
    return numbers;
}

} // namespace

std::optional<WindowPlace> WindowPlace::fromText(std::string_view text) {
    QStringList words = wordsOf(text);
    WindowPlace place;
    place.isMaximized = words.removeOne(maximizedWord);
    const auto numbers = numbersOf(words);
    if (!numbers || numbers->size() != 4)
        return std::nullopt;
    place.frame = QRect(numbers->at(0), numbers->at(1), numbers->at(2), numbers->at(3));
    if (place.frame.width() < smallest.width() || place.frame.height() < smallest.height())
        return std::nullopt;
    return place;
}

std::string WindowPlace::text() const {
    const QString place =
        QStringLiteral("%1 %2 %3 %4").arg(frame.x()).arg(frame.y()).arg(frame.width()).arg(frame.height());
    return (isMaximized ? place + QLatin1Char(' ') + maximizedWord : place).toStdString();
}

bool canBeReached(const WindowPlace& place, const QList<QRect>& visibleAreas) {
    const QRect edge(place.frame.topLeft(), QSize(place.frame.width(), toGrab.height()));
    return std::any_of(visibleAreas.begin(), visibleAreas.end(), [&](const QRect& area) {
        const QRect seen = edge & area;
        return seen.width() >= toGrab.width() && seen.height() == toGrab.height();
    });
}

QRect placeInMiddle(const QSize& size, const QMargins& frame, const QRect& visibleArea) {
    const QSize outer = size.grownBy(frame).boundedTo(visibleArea.size());
    return betterCenter(outer, visibleArea).marginsRemoved(frame);
}

std::optional<QList<int>> widthsFromText(std::string_view text, qsizetype count) {
    const auto widths = numbersOf(wordsOf(text));
    const bool areWidths = widths && widths->size() == count &&
                           std::all_of(widths->begin(), widths->end(), [](int width) { return width > 0; });
    return areWidths ? widths : std::nullopt;
}

std::string textOfWidths(const QList<int>& widths) {
    QStringList words;
    for (const int width : widths)
        words << QString::number(width);
    return words.join(QLatin1Char(' ')).toStdString();
}

} // namespace veilkeep

#include "widgets/preview/QuickFacts.h"

#include "core/base/PathText.h"
#include "core/records/FileSystemHelpers.h"
#include "filelist/Texts.h"
#include "format/ValueFormatting.h"
#include "widgets/controls/ElidedLabel.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace veilkeep {
namespace {

constexpr QSize iconSize{128, 128};
constexpr QSize mostImageSize{320, 240};
constexpr int spacing = 24;

QLabel* plainLabel(QWidget* parent) {
    auto* const label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace

QuickFacts::QuickFacts(QWidget* parent)
    : QWidget(parent), m_icon(new QLabel(this)), m_message(plainLabel(this)), m_facts(new QFormLayout) {
    m_facts->setLabelAlignment(Qt::AlignRight | Qt::AlignTop);
    m_facts->setHorizontalSpacing(12);
    m_facts->setVerticalSpacing(6);
    m_facts->setContentsMargins(0, 8, 0, 0);
    m_message->setWordWrap(true);
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 1.2);
    m_message->setFont(large);

    auto* const texts = new QVBoxLayout;
    texts->addStretch();
    texts->addWidget(m_message);
    texts->addLayout(m_facts);
    texts->addStretch();
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(spacing, spacing, spacing, spacing);
    row->setSpacing(spacing);
    row->addWidget(m_icon, 0, Qt::AlignVCenter);
    row->addLayout(texts, 1);
}

void QuickFacts::setFacts(const File& file, const QIcon& icon, const QuickContent& content) {
    clearFacts();
    setIcon(icon, content.image);
    const bool isMissing = content.kind == QuickContent::Kind::Missing || file.state() == File::Broken;
    m_message->setText(isMissing ? tr("Not found") : QString());
    m_message->setVisible(isMissing);
    addFact(tr("Kind"), content.type.comment);
    addFact(tr("Size"), sizeText(file, content));
    if (!isMissing)
        addFact(tr("State"), stateText(file));
    addFact(tr("Where"), placeWithTilde(parentPath(file.originalPath())));
    addFact(tr("Created"), content.created);
    addFact(tr("Modified"), content.modified);
}

void QuickFacts::setMessage(const QString& message, const QIcon& icon) {
    clearFacts();
    setIcon(icon, {});
    m_message->setText(message);
    m_message->show();
}

QString QuickFacts::sizeText(const File& file, const QuickContent& content) {
    const QString size = stringSizeFromLong(static_cast<std::int64_t>(file.size()));
    return NumberOfFilesInDirectoryValueTransformer::text(size, content.entries);
}

QString QuickFacts::stateText(const File& file) {
    if (file.state() == File::Broken)
        return tr("Not found");
    return file.state() == File::Hidden ? tr("Hidden") : tr("Visible");
}

void QuickFacts::setIcon(const QIcon& icon, const QImage& image) {
    const qreal ratio = devicePixelRatioF();
    if (image.isNull()) {
        m_icon->setPixmap(icon.pixmap(iconSize, ratio));
        return;
    }
    QPixmap picture = QPixmap::fromImage(image.scaled(image.size().boundedTo(mostImageSize * ratio),
                                                      Qt::KeepAspectRatio, Qt::SmoothTransformation));
    picture.setDevicePixelRatio(ratio);
    m_icon->setPixmap(picture);
}

void QuickFacts::addFact(const QString& title, const QString& value) {
    if (value.isEmpty())
        return;
    auto* const text = new ElidedLabel(this);
    text->setText(value);
    text->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    auto* const label = plainLabel(this);
    label->setText(title);
    label->setForegroundRole(QPalette::PlaceholderText);
    m_facts->addRow(label, text);
}

void QuickFacts::clearFacts() {
    while (m_facts->rowCount() > 0)
        m_facts->removeRow(0);
}

} // namespace veilkeep

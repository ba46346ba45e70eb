#include "platform/linux/BusRequest.h"

#include "core/log/Log.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusMetaType>
#include <QList>
#include <QStringList>

namespace veilkeep {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(BusRequest)
};

bool isPlain(const QVariant& value) {
    switch (value.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::QString:
    case QMetaType::QByteArray:
    case QMetaType::QStringList:
    case QMetaType::QByteArrayList:
        return true;
    default:
        return false;
    }
}

qsizetype sizeOf(const QVariant& value) {
    if (value.typeId() == QMetaType::QByteArray)
        return value.toByteArray().size();
    qsizetype size = 0;
    if (value.typeId() == QMetaType::QByteArrayList) {
        for (const QByteArray& bytes : value.value<QByteArrayList>())
            size += bytes.size() + 1;
        return size;
    }
    for (const QString& text : value.toStringList())
        size += text.size() + 1;
    return size;
}

QVariant forBus(const QVariant& value) {
    if (value.typeId() == QMetaType::ULong)
        return value.toULongLong();
    return value.typeId() == QMetaType::Long ? QVariant(value.toLongLong()) : value;
}

QVariant fromBus(const QVariant& value) {
    if (value.typeId() != qMetaTypeId<QDBusArgument>())
        return value;
    const auto argument = value.value<QDBusArgument>();
    return argument.currentSignature() == QLatin1String("aay")
               ? QVariant::fromValue(qdbus_cast<QByteArrayList>(argument))
               : QVariant();
}

QString faultOfPaths(const QByteArrayList& paths) {
    if (paths.size() > maximumPaths)
        return Texts::tr("Too many items in one request.");
    qsizetype bytes = 0;
    for (const QByteArray& path : paths) {
        if (!path.startsWith('/'))
            return Texts::tr("A path in the request does not begin with \"/\".");
        if (path.contains('\0'))
            return Texts::tr("A path in the request has a NUL byte.");
        bytes += path.size();
    }
    return bytes > maximumPathBytes ? Texts::tr("The paths in the request are too long together.")
                                    : QString();
}

} // namespace

void registerRequestTypes() {
    qDBusRegisterMetaType<QByteArrayList>();
    qDBusRegisterMetaType<QList<QVariantMap>>();
}

QVariantMap busValues(const QVariantMap& values) {
    QVariantMap sent;
    for (auto value = values.begin(); value != values.end(); ++value) {
        if (const QVariant ours = forBus(*value); isPlain(ours))
            sent.insert(value.key(), ours);
        else
            logLine("Not sent over the bus, for its kind: " + value.key().toStdString());
    }
    return sent;
}

ReadValues readValues(const QVariantMap& received) {
    ReadValues read;
    for (auto value = received.begin(); value != received.end(); ++value) {
        if (const QVariant ours = fromBus(*value); isPlain(ours))
            read.values.insert(value.key(), ours);
        else
            read.isComplete = false;
    }
    return read;
}

QByteArrayList busPaths(const std::vector<std::string>& paths) {
    QByteArrayList sent;
    sent.reserve(static_cast<qsizetype>(paths.size()));
    for (const std::string& path : paths)
        sent.append(QByteArray::fromStdString(path));
    return sent;
}

QString faultOfRequest(const QString& command, const QByteArrayList& paths, const QVariantMap& options) {
    if (command.isEmpty() || command.size() > maximumTextSize)
        return Texts::tr("The request names no command.");
    if (options.size() > maximumOptions)
        return Texts::tr("Too many options in one request.");
    for (auto option = options.begin(); option != options.end(); ++option)
        if (option.key().size() + sizeOf(*option) > maximumTextSize)
            return Texts::tr("An option of the request is too long.");
    return faultOfPaths(paths);
}

} // namespace veilkeep

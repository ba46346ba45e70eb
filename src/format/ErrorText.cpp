#include "format/ErrorText.h"

#include "format/PrintableName.h"

#include <QCoreApplication>

#include <cstring>

namespace veilkeep {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(ErrorText)
};

} // namespace

QString workerErrorText(int number) {
    if (number < static_cast<int>(WorkerError::Success) ||
        number > static_cast<int>(WorkerError::InputOutput))
        return Texts::tr("Unknown error (%1)").arg(number);
    return workerErrorText(static_cast<WorkerError>(number));
}

QString workerErrorText(WorkerError error) {
    switch (error) {
    case WorkerError::Success:
        return Texts::tr("Success");
    case WorkerError::Unknown:
        return Texts::tr("Unknown error");
    case WorkerError::NotFound:
        return Texts::tr("Item not found.");
    case WorkerError::NotEnoughRights:
        return Texts::tr("Not enough rights to perform operation.");
    case WorkerError::AlreadyHidden:
        return Texts::tr("Item you requested is already hidden.");
    case WorkerError::NoHiddenDirectory:
        return Texts::tr("Can't create directory for storing hidden items.");
    case WorkerError::NameTaken:
        return Texts::tr("Item with the same name already exists.");
    case WorkerError::Cancelled:
        return Texts::tr("User cancelled operation.");
    case WorkerError::Protected:
        return Texts::tr("It is not allowed to hide these items to avoid serious system malfunctions.");
    case WorkerError::NameCannotBeHidden:
        return Texts::tr(
            "An item with this name can't be hidden: its hidden name would be too long or could not be "
            "turned back.");
    case WorkerError::NoSpace:
        return Texts::tr("There is no space left on the disk.");
    case WorkerError::ReadOnlyFileSystem:
        return Texts::tr("The disk is read-only.");
    case WorkerError::CannotBeMoved:
        return Texts::tr(
            "The item can't be moved: it is a mount point, or parts of it lie on another volume.");
    case WorkerError::InputOutput:
        return Texts::tr("The disk reported an input/output error.");
    }
    return {};
}

QString errorReason(const Error& error) {
    switch (error.code) {
    case ErrorCode::System:
        return QString::fromLocal8Bit(std::strerror(error.systemError));
    case ErrorCode::Damaged:
        return Texts::tr("The file is damaged.");
    case ErrorCode::TooLarge:
        return Texts::tr("The file is too large.");
    case ErrorCode::NewerVersion:
        return Texts::tr("The file was written by a newer version of Veilkeep.");
    case ErrorCode::NotDurable:
        return Texts::tr("It was done, but may not survive a power cut.");
    case ErrorCode::NotAFile:
        return Texts::tr("There is something there that is not a file.");
    case ErrorCode::InvalidArgument:
        return Texts::tr("The request is not valid.");
    }
    return {};
}

QString errorWithPath(const Error& error) {
    return QStringLiteral("%1: %2").arg(shownPath(error.path), errorReason(error));
}

} // namespace veilkeep

#include "format/ErrorText.h"

#include <QCoreApplication>

#include <cstring>

namespace veilkeep {
namespace {

QString text(const char* source) {
    return QCoreApplication::translate("ErrorText", source);
}

} // namespace

QString workerErrorText(int number) {
    if (number < static_cast<int>(WorkerError::Success) ||
        number > static_cast<int>(WorkerError::InputOutput))
        return text("Unknown error (%1)").arg(number);
    return workerErrorText(static_cast<WorkerError>(number));
}

QString workerErrorText(WorkerError error) {
    switch (error) {
    case WorkerError::Success:
        return text("Success");
    case WorkerError::Unknown:
        return text("Unknown error");
    case WorkerError::NotFound:
        return text("Item not found.");
    case WorkerError::NotEnoughRights:
        return text("Not enough rights to perform operation.");
    case WorkerError::AlreadyHidden:
        return text("Item you requested is already hidden.");
    case WorkerError::NoHiddenDirectory:
        return text("Can't create directory for storing hidden items.");
    case WorkerError::NameTaken:
        return text("Item with the same name already exists.");
    case WorkerError::Cancelled:
        return text("User cancelled operation.");
    case WorkerError::Protected:
        return text("It is not allowed to hide these items to avoid serious system malfunctions.");
    case WorkerError::NameCannotBeHidden:
        return text(
            "An item with this name can't be hidden: its hidden name would be too long or could not be "
            "turned back.");
    case WorkerError::NoSpace:
        return text("There is no space left on the disk.");
    case WorkerError::ReadOnlyFileSystem:
        return text("The disk is read-only.");
    case WorkerError::CannotBeMoved:
        return text("The item can't be moved: it is a mount point, or parts of it lie on another volume.");
    case WorkerError::InputOutput:
        return text("The disk reported an input/output error.");
    }
    return {};
}

QString errorReason(const Error& error) {
    switch (error.code) {
    case ErrorCode::System:
        return QString::fromLocal8Bit(std::strerror(error.systemError));
    case ErrorCode::Damaged:
        return text("The file is damaged.");
    case ErrorCode::TooLarge:
        return text("The file is too large.");
    case ErrorCode::NewerVersion:
        return text("The file was written by a newer version of Veilkeep.");
    case ErrorCode::NotDurable:
        return text("It was done, but may not survive a power cut.");
    case ErrorCode::NotAFile:
        return text("There is something there that is not a file.");
    case ErrorCode::InvalidArgument:
        return text("The request is not valid.");
    }
    return {};
}

} // namespace veilkeep

#pragma once

#include <string>
#include <utility>

namespace veilkeep {

enum class ErrorCode {
    System,          // a system call failed; systemError says how
    Damaged,         // the bytes do not follow their format
    TooLarge,        // more bytes than this kind of file may have
    NewerVersion,    // written by a later version in a form that this one cannot read
    NotDurable,      // done, but a power cut may still undo it
    NotAFile,        // a directory, a fifo or the like lies where a file belongs
    InvalidArgument, // the caller asked for what cannot be
};

// What failed, on which path, and why. Sentences for people are made from it outside of core.
struct Error {
    ErrorCode code = ErrorCode::System;
    std::string operation; // a system call or a step, "rename", "decode"
    std::string path;      // bytes as the system gave them; empty where no path is concerned
    int systemError = 0;   // errno, 0 where no system call failed

    static Error system(std::string operation, std::string path, int systemError) {
        return {ErrorCode::System, std::move(operation), std::move(path), systemError};
    }
    static Error damaged(std::string operation, std::string path = {}) {
        return {ErrorCode::Damaged, std::move(operation), std::move(path), 0};
    }

    bool operator==(const Error&) const = default;
};

} // namespace veilkeep

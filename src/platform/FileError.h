#pragma once

#include <string>

namespace tavrel {

/// Why a file operation failed.
struct FileError {
    int code = 0;         // A value of <cerrno>.
    std::string message;  // The system's reason in English, as a person reads it.

    bool operator==(const FileError&) const = default;
};

/// The error for a value of <cerrno>, in English whatever the locale: "No such file or directory".
FileError fileError(int code);

/// The error for a device, pipe or socket where a file is wanted: `EINVAL`, "Not a regular file".
FileError notARegularFileError();

}  // namespace tavrel

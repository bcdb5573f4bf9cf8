#include "platform/FileError.h"

#include <cerrno>
#include <cstring>

namespace tavrel {

FileError fileError(int code)
{
    // strerror would follow the locale, and is not safe to call on two threads at once.
    const char* reason = strerrordesc_np(code);
    return {code, reason ? reason : "Unknown error " + std::to_string(code)};
}

FileError notARegularFileError()
{
    return {EINVAL, "Not a regular file"};
}

}  // namespace tavrel

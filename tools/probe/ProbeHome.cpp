#include "probe/ProbeHome.h"

#include <cstdlib>
#include <string>
#include <system_error>

namespace tavrel::probe {

ProbeHome::ProbeHome(const Json& request)
{
    if (member(request, "home")) {
        path_ = utf8Member(request, "home");
        return;
    }
    std::string pattern = (std::filesystem::temp_directory_path() / "tavrel-home-XXXXXX").string();
    if (!::mkdtemp(pattern.data()))
        throw RequestError("cannot make a folder like " + pattern);
    path_ = pattern;
    isTemporary_ = true;
}

ProbeHome::~ProbeHome()
{
    std::error_code ignored;
    if (isTemporary_)
        std::filesystem::remove_all(path_, ignored);
}

}  // namespace tavrel::probe

#include "editor/EditorTab.h"

#include "platform/Utf8.h"

#include <algorithm>

namespace tavrel {

namespace {

bool isControl(char16_t unit)
{
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0) || unit == 0x2028 || unit == 0x2029;
}

}  // namespace

std::u16string shownFileName(const std::filesystem::path& path)
{
    std::u16string name = utf16FromUtf8(path.filename().native());
    std::replace_if(name.begin(), name.end(), isControl, u' ');
    return name;
}

std::u16string tabTitle(const EditorDocument& document)
{
    if (document.isEmpty())
        return u"No File";
    return (document.isModified ? u"• " : u"") + documentName(document);
}

std::u16string documentName(const EditorDocument& document)
{
    return document.url ? shownFileName(*document.url) : u"Untitled";
}

}  // namespace tavrel

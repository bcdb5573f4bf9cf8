#include "editor/EditorTab.h"

#include "platform/Utf8.h"

namespace tavrel {

std::u16string tabTitle(const EditorDocument& document)
{
    if (document.isEmpty())
        return u"No File";
    return (document.isModified ? u"• " : u"") + documentName(document);
}

std::u16string documentName(const EditorDocument& document)
{
    return document.url ? utf16FromUtf8(document.url->filename().native()) : u"Untitled";
}

}  // namespace tavrel

# Puts files into a C++ source, so that they travel inside the program. Run at build time:
#
#   cmake -DROOT=<folder> -DFILES=<paths below it, separated by ","> -DOUTPUT=<source> -P EmbedFiles.cmake
#
# The source defines tavrel::BuiltInResources::files(), sorted by path.

string(REPLACE "," ";" names "${FILES}")
list(SORT names COMPARE STRING)
set(rows "")
foreach(name IN LISTS names)
    file(READ "${ROOT}/${name}" text)
    if(text MATCHES "\\)resource\"")
        message(FATAL_ERROR "${name} holds the mark that ends a resource in its source")
    endif()
    string(APPEND rows "    {\"${name}\"sv, R\"resource(${text})resource\"sv},\n")
endforeach()
file(WRITE "${OUTPUT}" "#include \"config/BuiltInResources.h\"

namespace tavrel {

using namespace std::string_view_literals;

std::span<const EmbeddedFile> BuiltInResources::files()
{
    static constexpr EmbeddedFile embedded[] = {
${rows}    };
    return embedded;
}

}  // namespace tavrel
")

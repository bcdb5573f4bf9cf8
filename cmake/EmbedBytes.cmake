# Puts one file of bytes into a C++ source. Run at build time:
#
#   cmake -DINPUT=<file> -DHEADER=<include> -DFUNCTION=<qualified name> -DOUTPUT=<source> -P EmbedBytes.cmake
#
# The source defines the function, which HEADER declares to answer the bytes as a std::string_view.

file(READ "${INPUT}" hex HEX)
if(hex STREQUAL "")
    message(FATAL_ERROR "${INPUT} is empty")
endif()
string(REGEX REPLACE "(..)" "0x\\1, " numbers "${hex}")
string(LENGTH "${hex}" digits)
math(EXPR size "${digits} / 2")
file(WRITE "${OUTPUT}" "#include \"${HEADER}\"

std::string_view ${FUNCTION}()
{
    static constexpr unsigned char bytes[${size}] = {${numbers}};
    return {reinterpret_cast<const char*>(bytes), ${size}};
}
")

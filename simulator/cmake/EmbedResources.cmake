# Writes OUTPUT, a source file that holds DOCUMENT and the files of FOLDER, so that nothing has to be found at run time.
# In pieces: no string literal is long enough for every compiler, and lists of bytes take long to compile.
file(GLOB_RECURSE files "${FOLDER}/*.json")
list(SORT files)
set(arrays "")
set(rows "")
set(index 0)
foreach(path IN LISTS DOCUMENT files)
    file(RELATIVE_PATH name "${FOLDER}" "${path}")
    file(READ "${path}" bytes HEX)
    string(LENGTH "${bytes}" length)
    set(pieces "")
    set(at 0)
    while(at LESS length)
        string(SUBSTRING "${bytes}" ${at} 8000 piece)
        string(REGEX REPLACE "([0-9a-f][0-9a-f])" "\\\\x\\1" piece "${piece}")
        string(APPEND pieces "    \"${piece}\",\n")
        math(EXPR at "${at} + 8000")
    endwhile()
    string(APPEND arrays "const char* const kFile${index}[] = {\n${pieces}};\n")
    if(index GREATER 0)
        string(APPEND rows "        {\"${name}\", Joined(kFile${index})},\n")
    endif()
    math(EXPR index "${index} + 1")
endforeach()
file(WRITE "${OUTPUT}" "#include <string>

#include \"src/Description.h\"
#include \"src/Wire.h\"

namespace nexwire::simulator {
namespace {
${arrays}
template <std::size_t Count>
std::string Joined(const char* const (&pieces)[Count])
{
    std::string text;
    for (const char* piece : pieces) {
        text += piece;
    }
    return text;
}
} // namespace

std::string_view EmbeddedDocument()
{
    static const std::string text = Joined(kFile0);
    return text;
}

const std::vector<ResourceFile>& EmbeddedResources()
{
    static const std::vector<ResourceFile> files = {
${rows}    };
    return files;
}

} // namespace nexwire::simulator
")

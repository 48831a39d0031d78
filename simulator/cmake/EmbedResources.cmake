# Writes OUTPUT, a source file that holds DOCUMENT and the files of FOLDER and PAGE, so that nothing has to be found at
# run time.
# In pieces: no string literal is long enough for every compiler, and lists of bytes take long to compile.
file(GLOB_RECURSE files "${FOLDER}/*.json")
list(SORT files)
file(GLOB page "${PAGE}/*")
set(arrays "")
set(rows "")
set(page_rows "")
set(index 0)
foreach(path IN LISTS DOCUMENT files page)
    cmake_path(GET path FILENAME name)
    file(READ "${path}" bytes HEX)
    string(LENGTH "${bytes}" length)
    set(pieces "")
    set(at 0)
    while(at LESS length)
        string(SUBSTRING "${bytes}" ${at} 8000 piece)
        string(REGEX REPLACE "([0-9a-f][0-9a-f])" "\\\\x\\1" piece "${piece}")
        string(APPEND pieces "    \"${piece}\"sv,\n")
        math(EXPR at "${at} + 8000")
    endwhile()
    string(APPEND arrays "const Pieces kFile${index} = {\n${pieces}};\n")
    list(FIND page "${path}" of_page)
    if(of_page GREATER -1)
        string(APPEND page_rows "        {\"${name}\", Joined(kFile${index})},\n")
    elseif(index GREATER 0)
        string(APPEND rows "        {\"${name}\", Joined(kFile${index})},\n")
    endif()
    math(EXPR index "${index} + 1")
endforeach()
file(WRITE "${OUTPUT}" "#include <string>

#include \"src/Description.h\"
#include \"src/Wire.h\"
#include \"src/Workbench.h\"

namespace nexwire::simulator {
namespace {
using namespace std::string_view_literals;
using Pieces = std::vector<std::string_view>;
${arrays}
std::string Joined(const Pieces& pieces)
{
    std::string text;
    for (const std::string_view piece : pieces) {
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

const std::vector<PageFile>& EmbeddedPage()
{
    static const std::vector<PageFile> files = {
${page_rows}    };
    return files;
}

} // namespace nexwire::simulator
")

# Writes OUTPUT, a source file that holds DOCUMENT and the files of FOLDER/*.json as bytes: no string literal is long
# enough for every compiler, and nothing has to be found at run time.
file(GLOB_RECURSE files "${FOLDER}/*.json")
list(SORT files)
set(arrays "")
set(rows "")
set(index 0)
foreach(path IN LISTS DOCUMENT files)
    file(RELATIVE_PATH name "${FOLDER}" "${path}")
    file(READ "${path}" bytes HEX)
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
    string(APPEND arrays "const unsigned char kFile${index}[] = {${bytes}0x00};\n")
    if(index GREATER 0)
        string(APPEND rows "        {\"${name}\", View(kFile${index}, sizeof kFile${index} - 1)},\n")
    endif()
    math(EXPR index "${index} + 1")
endforeach()
file(WRITE "${OUTPUT}" "#include \"src/Description.h\"
#include \"src/Wire.h\"

namespace nexwire::simulator {
namespace {
${arrays}
std::string_view View(const unsigned char* bytes, std::size_t size)
{
    return {reinterpret_cast<const char*>(bytes), size};
}
} // namespace

std::string_view EmbeddedDocument()
{
    return View(kFile0, sizeof kFile0 - 1);
}

const std::vector<ResourceFile>& EmbeddedResources()
{
    static const std::vector<ResourceFile> files = {
${rows}    };
    return files;
}

} // namespace nexwire::simulator
")

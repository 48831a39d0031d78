# Writes OUTPUT, a source file that holds the bytes of FILE as `const unsigned char NAME[]` and their number as
# `NAMESize` in NAMESPACE: no string literal is long enough for every compiler.
file(READ "${FILE}" bytes HEX)
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
file(WRITE "${OUTPUT}" "#include <cstddef>

namespace ${NAMESPACE} {
extern const unsigned char ${NAME}[];
extern const std::size_t ${NAME}Size;
const unsigned char ${NAME}[] = {${bytes}};
const std::size_t ${NAME}Size = sizeof ${NAME};
} // namespace ${NAMESPACE}
")

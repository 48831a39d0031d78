# Writes OUTPUT: the tables of all structures in the sources of PROTOCOL, by namespace, as core/Structures.h hands them out.
file(GLOB_RECURSE sources "${PROTOCOL}/*.cpp")
list(SORT sources)
set(spaces "")
foreach(source IN LISTS sources)
    set(space "")
    file(STRINGS "${source}" lines REGEX "^(NEXWIRE_[A-Z_]*FIELDS\\(|namespace [a-z]|} // namespace [a-z])")
    foreach(line IN LISTS lines)
        if(line MATCHES "^namespace ([a-zA-Z0-9_:]+)")
            list(APPEND space "${CMAKE_MATCH_1}")
        elseif(line MATCHES "^} // namespace")
            list(POP_BACK space)
        elseif(line MATCHES "^NEXWIRE_[A-Z_]*FIELDS\\(([A-Za-z0-9_]+)")
            set(name "${CMAKE_MATCH_1}")
            string(REPLACE ";" "::" full "${space}")
            if(NOT full MATCHES "^protocol(::|$)")
                message(FATAL_ERROR "${source}: the table of ${name} stands outside of namespace protocol")
            endif()
            string(MAKE_C_IDENTIFIER "${full}" id)
            list(APPEND spaces "${full}")
            string(APPEND tables_${id} "    &${full}::k${name}Table,\n")
            string(APPEND declared_${id} "extern const nexwire::core::FieldTable* const k${name}Table;\n")
        endif()
    endforeach()
endforeach()
list(REMOVE_DUPLICATES spaces)
list(SORT spaces)
set(declarations "")
set(lists "")
set(groups "")
foreach(full IN LISTS spaces)
    string(MAKE_C_IDENTIFIER "${full}" id)
    string(REGEX REPLACE "^protocol(::)?" "" space "${full}")
    string(APPEND declarations "namespace ${full} {\n${declared_${id}}}\n")
    string(APPEND lists "constexpr const FieldTable* const* k_${id}[] = {\n${tables_${id}}};\n")
    string(APPEND groups "    {\"${space}\", k_${id}, sizeof(k_${id}) / sizeof(k_${id}[0])},\n")
endforeach()
file(WRITE "${OUTPUT}" "#include \"core/FieldTable.h\"
#include \"core/Structures.h\"

${declarations}
namespace nexwire {
namespace core {
namespace {
${lists}constexpr StructureGroup kGroups[] = {
${groups}};
} // namespace

StructureGroups AllStructures()
{
    return {kGroups, sizeof(kGroups) / sizeof(kGroups[0])};
}

} // namespace core
} // namespace nexwire
")

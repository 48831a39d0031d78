# An answer with persons of the register, all sections filled, beside RapidJSON's DOM.
nexwire_bench(persons_bench SOURCES "${CMAKE_CURRENT_LIST_DIR}/persons_bench.cpp")
target_include_directories(persons_bench SYSTEM PRIVATE "${RAPIDJSON_INCLUDE_DIR}")

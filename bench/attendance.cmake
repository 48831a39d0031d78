# A page of attendance results beside another reader.
find_package(nlohmann_json REQUIRED)

nexwire_bench(attendance_bench SOURCES attendance_bench.cpp LIBS nlohmann_json::nlohmann_json)

# A page of the local platform's log beside a bare SQLite query.
if(NOT TARGET nexwire_simulator OR NOT TARGET nexwire_host)
    return()
endif()
find_package(Boost 1.74 REQUIRED)
pkg_check_modules(SQLITE REQUIRED IMPORTED_TARGET sqlite3)
nexwire_bench(bench_log SOURCES log_bench.cpp
    LIBS nexwire::host nexwire::simulator Boost::headers PkgConfig::SQLITE Threads::Threads)

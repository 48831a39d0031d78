# The local platform while its page is open.
if(NOT TARGET nexwire_simulator)
    return()
endif()
find_package(Boost 1.74 REQUIRED)
add_executable(workbench_bench workbench_bench.cpp)
nexwire_target(workbench_bench)
target_link_libraries(workbench_bench PRIVATE nexwire::simulator benchmark::benchmark Boost::headers Threads::Threads)

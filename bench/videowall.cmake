# A video wall call beside a bare POST.
find_package(benchmark REQUIRED)
find_package(Boost 1.74 REQUIRED)
find_package(CURL 7.80 REQUIRED)

if(NOT TARGET nexwire_simulator)
    return()
endif()
add_executable(videowall_bench "${CMAKE_CURRENT_LIST_DIR}/videowall_bench.cpp")
nexwire_target(videowall_bench)
target_link_libraries(videowall_bench
    PRIVATE nexwire::nexwire nexwire::simulator benchmark::benchmark Boost::headers CURL::libcurl Threads::Threads)

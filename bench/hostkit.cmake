# What the parts of the host kit cost a call.
if(TARGET nexwire_host)
    nexwire_bench(hostkit_bench SOURCES hostkit_bench.cpp LIBS nexwire::host)
endif()

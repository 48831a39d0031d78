// What of Boost's network libraries needs no template, compiled once: see BOOST_ASIO_SEPARATE_COMPILATION.
#include <boost/asio/impl/src.hpp>

#pragma once

#include <memory>

#include <boost/asio/ip/tcp.hpp>

#include "src/HttpConnection.h"

namespace nexwire::simulator {

/// @param socket  whose executor is a strand.
std::shared_ptr<HttpConnection> ConnectionOf(boost::asio::ip::tcp::socket socket);

} // namespace nexwire::simulator

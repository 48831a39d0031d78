#pragma once

#include <memory>

#include "src/HttpConnection.h"
#include "src/HttpServer.h"

namespace nexwire::simulator {

/// What all connections of a server have in common.
struct HttpShared {
    HttpServer::Settings settings;
    HttpServer::Handler handler;
    HttpServer::Observer observer;
};

/// Answers what comes over the connection until it ends.
/// @param shared  outlives the connection.
void Serve(std::shared_ptr<HttpConnection> connection, const HttpShared& shared);

} // namespace nexwire::simulator

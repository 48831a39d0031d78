#pragma once

#include <memory>
#include <string>

#include "nexwire/RequestRecords.h"

namespace nexwire {
namespace catalogue {

/// A service on loopback that notes requests and answers each with an empty success, for functions that send for
/// themselves instead of asking the executor.
class DirectRecorder {
public:
    DirectRecorder();
    ~DirectRecorder();
    DirectRecorder(const DirectRecorder&) = delete;
    DirectRecorder& operator=(const DirectRecorder&) = delete;

    std::string Port() const;
    /// What its answers hold from now on; empty at first.
    void SetData(const std::string& json);
    void Clear();
    /// The last request since `Clear`; false when there was none. Such requests are all POST: method code 2.
    bool Take(RequestParams& request);

private:
    struct Server;
    std::unique_ptr<Server> server_;
};

} // namespace catalogue
} // namespace nexwire

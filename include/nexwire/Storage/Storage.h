#pragma once

#include "protocol/Storage/Storage.h"

// The server that keeps recordings, pictures and files. All functions block until the answer is there and may be called
// from any thread. Unless a line says otherwise they return true when the answer was a readable envelope, whatever its
// code; a result is untouched on false.

namespace nexwire {

/// Addresses under which files of the storage server can be fetched; the name is spelled so.
class NEXWIRE_API CGgetFilePathMapUrl {
public:
    static bool request(protocol::FilePathMapUrlResult& result, const protocol::FilePathMapUrl& files);
};

/// Gives such addresses back.
class NEXWIRE_API CDeleteFilePathMapUrl {
public:
    /// True when an answer came, whatever it says.
    static bool request(const protocol::DeletefilePathMapUrl& urls);
};

/// What the storage server is and how full it is, for components of the platform.
class NEXWIRE_API CInternalGetStorageServerInfo {
public:
    static bool request(protocol::StorageServerInfo& result);
};

} // namespace nexwire

#include "nexwire/Storage/Storage.h"

#include "core/Pipeline.h"

namespace nexwire {

namespace {

constexpr const char* kFilePathMapUrl = "/7730/v1/storageServer/filePathMapUrl";

} // namespace

bool CGgetFilePathMapUrl::request(protocol::FilePathMapUrlResult& result, const protocol::FilePathMapUrl& files)
{
    return Exchange(Query(kFilePathMapUrl, files), result);
}

bool CDeleteFilePathMapUrl::request(const protocol::DeletefilePathMapUrl& urls)
{
    return ExchangeUnread(Remove(kFilePathMapUrl, urls));
}

bool CInternalGetStorageServerInfo::request(protocol::StorageServerInfo& result)
{
    return Exchange(Query("/7730/v1/internal/storageServer/storageServerInfo"), result);
}

} // namespace nexwire

#include "nexwire/AccessController/PictureCache.h"

#include "core/Pipeline.h"

namespace nexwire {

bool CClearDAGPictureCache::request()
{
    return Exchange(Write("/7730/v1/internal/deviceManagement/clearPictureCache"));
}

} // namespace nexwire

#include "catalogue/Modules.h"

namespace nexwire {
namespace catalogue {

extern const Module kAccessControllerModule;
extern const Module kDeviceParametersModule;
extern const Module kFrameworkModule;
extern const Module kPassThroughModule;
extern const Module kVideoWallModule;

const std::vector<Module>& Modules()
{
    static const std::vector<Module> modules = {kAccessControllerModule, kDeviceParametersModule, kPassThroughModule,
                                                kVideoWallModule, kFrameworkModule};
    return modules;
}

} // namespace catalogue
} // namespace nexwire

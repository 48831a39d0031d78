#include "tools/Commands.h"
#include "tools/OpenApi.h"
#include "tools/Reference.h"

namespace nexwire::tools {
namespace {

int Save(const std::string& file, const std::string& content)
{
    if (file == "-") {
        return Output(content);
    }
    std::string error;
    if (!WriteWhole(file, content, error)) {
        Complain(error);
        return kUsage;
    }
    return kDone;
}

} // namespace

int OpenApi(const std::string& file)
{
    return Save(file, OpenApiDocument());
}

int Reference(const std::string& file)
{
    return Save(file, ReferencePage());
}

} // namespace nexwire::tools

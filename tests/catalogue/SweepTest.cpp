#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <keel/Error.h>
#include <keel/GuidUtil.h>
#include <keel/Log.h>
#include <rapidjson/document.h>

#include "catalogue/Catalogue.h"
#include "catalogue/Comments.h"
#include "catalogue/Find.h"
#include "nexwire/LastExchange.h"
#include "nexwire/Nexwire.h"
#include "nexwire/VideoWall/VideoWall.h"
#include "nexwire/host/HttpRequestExecutor.h"
#include "simulator/Platform.h"
#include "simulator/VideoWallService.h"

// Every catalogued function at once, against the recorder, the local platform and the library's exports.

namespace nexwire::catalogue {
namespace {

/// Those that send nothing say so in their headers.
bool IsSilent(const Function& function)
{
    const std::string text = DocOfFunction(function).text;
    return text.find("ends nothing") != std::string::npos || text.find("lways false") != std::string::npos;
}

/// So do those of which an argument has no part in the request.
bool IsUnused(const Function& function, const Argument& argument)
{
    const FunctionDoc doc = DocOfFunction(function);
    const auto said = std::find_if(doc.parameters.begin(), doc.parameters.end(),
                                   [&](const auto& parameter) { return parameter.first == argument.name; });
    return argument.name.rfind("unused", 0) == 0 ||
           (said != doc.parameters.end() && said->second.find("plays no part") != std::string::npos);
}

bool IsWall(const Function& function)
{
    return function.Module() == "VideoWall";
}

/// The platform has one path with blanks in it, which a transport of HTTP cannot send.
bool HasBlanks(const Function& function)
{
    return UniqueName(function) == "CCorvidCMSComm::request(CorvidSMSPort)";
}

/// False where nothing is found, which is no error.
constexpr const char* kNothingFound = "CCorvidCMSComm::request(SearchRecPicFileParam, CMSearchResult)";

/// Whether the answer is a device's own, which the devices of the local platform need not have; or that of a picture
/// that nobody put there.
bool IsAnsweredElsewhere(const Function& function)
{
    static const std::set<std::string> names = {
        "ACDoorPlan::getDoorStatusInfo", kNothingFound, "CEmapElementComm::getMapPicture",
        "CEmapRadarElementComm::getPointCloudStruct", "CMarqueeComm::setGeneralCorvidKey"};
    return function.ClassName() == "CInformationReleaseDeviceComm" || names.count(UniqueName(function)) != 0;
}

/// A device of the local platform.
constexpr const char* kDevice = "AC000000000000000000000000000001";

/// JSON of a structure whose texts all hold an identifier; some go into paths.
std::string WithIdentifiers(const core::FieldTable& fields)
{
    std::string json = "{";
    for (const core::Field& field : fields) {
        if (field.kind == core::Kind::Text) {
            json += std::string(json.size() > 1 ? "," : "") + "\"" + field.key + "\":\"" + kDevice + "\"";
        }
    }
    return json + "}";
}

/// What a caller could give.
void Fill(Call& call, const std::string& file)
{
    const std::vector<Argument>& arguments = call.function().Arguments();
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (!arguments[i].input()) {
            continue;
        }
        std::string error;
        bool good = true;
        switch (arguments[i].type->shape) {
        case Shape::Text:
            good = call.Set(i,
                            arguments[i].name == "condition" ? "1"
                            : arguments[i].name == "file"    ? file
                                                             : kDevice,
                            error);
            break;
        case Shape::TextList:
            good = call.Set(i, "[\"" + std::string(kDevice) + "\"]", error);
            break;
        case Shape::Integer:
            good = call.Set(i, arguments[i].name == "timeoutMs" ? "60000" : "1", error);
            break;
        case Shape::Structure:
            good = call.Set(i, WithIdentifiers(*arguments[i].type->fields()), error);
            break;
        default:
            call.Sample(i);
            break;
        }
        EXPECT_TRUE(good) << error;
    }
}

class Sweep : public testing::Test {
protected:
    void SetUp() override
    {
        Keel::details::LogConfig quiet;
        quiet.level = Keel::details::LogLevel::Off;
        quiet.console = false;
        Keel::details::CLog().Configure(quiet);
    }
};

TEST_F(Sweep, EveryFunctionSendsAWellFormedRequest)
{
    Recorder recorder;
    for (const Function& function : All()) {
        SCOPED_TRACE(function.Signature());
        const Trace trace = recorder.Run(function);
        EXPECT_NE(IsSilent(function), trace.sent);
        if (!trace.sent) {
            continue;
        }
        const RequestParams& request = trace.request;
        // What is made of this does not differ from build to build.
        const RequestParams again = recorder.Run(function).request;
        EXPECT_TRUE(request.url == again.url && request.body == again.body && request.headers == again.headers);
        EXPECT_EQ('/', request.url[0]);
        EXPECT_EQ(std::string::npos, request.url.find("//")) << request.url;
        EXPECT_EQ(HasBlanks(function), request.url.find(' ') != std::string::npos) << request.url;
        EXPECT_THAT(request.method, testing::AllOf(testing::Ge(0), testing::Le(3)));
        EXPECT_GT(request.timeoutMs, 0);
        EXPECT_EQ(IsWall(function), trace.direct);
        // A text of the caller's own goes out as it is.
        if (!request.body.empty() && request.body != "{body}" && request.params.count("Content-Type") == 0) {
            rapidjson::Document body;
            EXPECT_FALSE(body.Parse(request.body.c_str()).HasParseError()) << request.body;
        }
    }
}

// Every text that a caller gives reaches the platform: in the path, the body or a header field.
TEST_F(Sweep, EveryIdentifierReachesTheWire)
{
    Recorder recorder;
    for (const Function& function : All()) {
        const Trace trace = recorder.Run(function);
        std::string all = trace.request.url + trace.request.body;
        for (const auto& header : trace.request.headers) {
            all += " " + header.second;
        }
        for (const Argument& argument : function.Arguments()) {
            const bool text = argument.type->shape == Shape::Text || argument.type->shape == Shape::TextList;
            const bool localFile = recorder.Stand(argument) != "{" + argument.name + "}";
            if (trace.sent && text && argument.input() && !localFile) {
                EXPECT_NE(IsUnused(function, argument), all.find("{" + argument.name + "}") != std::string::npos)
                    << function.Signature() << " " << argument.name << ": " << all;
            }
        }
    }
}

TEST_F(Sweep, TheLocalPlatformAnswersEveryFunction)
{
    simulator::Platform platform;
    simulator::VideoWallService wall;
    std::string error;
    ASSERT_TRUE(platform.Start(error)) << error;
    ASSERT_TRUE(wall.Start(error)) << error;
    host::HttpExecutorOptions options;
    options.baseAddress = "http://127.0.0.1:" + std::to_string(platform.Port());
    NexwireInitParams params;
    params.executor = new host::HttpRequestExecutor(options);
    ASSERT_TRUE(NexwireInit(params));
    CTWDeviceCommon::init("127.0.0.1", std::to_string(wall.Port()));

    const std::filesystem::path file =
        std::filesystem::temp_directory_path() / ("nexwire-" + Keel::GuidUtil::CreateGuid() + ".csv");
    std::ofstream(file) << "content\n";
    for (const Function& function : All()) {
        if (IsSilent(function) || HasBlanks(function)) {
            continue;
        }
        SCOPED_TRACE(function.Signature());
        Call call(function);
        Fill(call, file.string());
        Keel::Error::SetLastError({});
        const Outcome outcome = call.Run();
        rapidjson::Document result;
        EXPECT_FALSE(result.Parse(call.Result(outcome).c_str()).HasParseError()) << call.Result(outcome);
        if (IsWall(function)) {
            EXPECT_NE(CTWDeviceCommon::kNetworkFailure, CTWDeviceCommon::getLastError().code);
            continue;
        }
        const ExchangeRecord& exchange = LastExchange();
        EXPECT_TRUE(exchange.sent);
        EXPECT_TRUE(exchange.answered) << exchange.path << " " << Keel::Error::GetLastError().text;
        // Only a refusal makes a function false: of the platform, or else of a device, which has an error of its own.
        const bool refused = exchange.parsed && exchange.number != 0;
        const bool explained = Keel::Error::GetLastError().category != 0 || UniqueName(function) == kNothingFound;
        EXPECT_TRUE(outcome.success || refused || (IsAnsweredElsewhere(function) && explained))
            << exchange.path << " " << Keel::Error::GetLastError().text;
    }
    EXPECT_TRUE(NexwireUnInit());
    std::filesystem::remove(file);
}

#if !defined(_WIN32)
/// Exported functions of classes by name, with how many overloads each has.
std::map<std::string, int> ExportedMembers()
{
    std::map<std::string, int> members;
    std::FILE* const pipe = popen(NM " -D -C --defined-only " NEXWIRE_LIBRARY, "r");
    if (pipe == nullptr) {
        return members;
    }
    char line[8192];
    while (std::fgets(line, sizeof line, pipe) != nullptr) {
        const std::string text = line;
        const std::size_t start = text.find(" T nexwire::");
        const std::size_t open = text.find('(');
        if (start == std::string::npos || open == std::string::npos) {
            continue;
        }
        const std::string name = text.substr(start + 12, open - start - 12);
        const std::size_t colons = name.find("::");
        if (colons == std::string::npos || name.find("::", colons + 2) != std::string::npos ||
            name.find_first_of("~<") != std::string::npos ||
            name.substr(0, colons) == name.substr(colons + 2)) { // Free functions, constructors, destructors
            continue;
        }
        ++members[name];
    }
    pclose(pipe);
    return members;
}

TEST(Exports, EveryFunctionOfEveryClassIsCatalogued)
{
    /// Classes that hosts use but that are no requests, what the catalogue itself uses, and a private one.
    const std::set<std::string> others = {"CConfigManagerProxy", "CIInterfaceManger", "core",
                                          "CalculateComm::ParseRapidJson"};
    std::map<std::string, int> catalogued;
    for (const Function& function : All()) {
        ++catalogued[function.Name()];
    }
    const std::map<std::string, int> exported = ExportedMembers();
    EXPECT_GT(exported.size(), 100U);
    for (const auto& member : exported) {
        if (others.count(member.first) + others.count(member.first.substr(0, member.first.find("::"))) == 0) {
            EXPECT_EQ(member.second, catalogued[member.first]) << member.first << " has a line per overload";
        }
    }
}
#endif

} // namespace
} // namespace nexwire::catalogue

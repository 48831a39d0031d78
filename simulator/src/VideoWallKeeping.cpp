#include "src/Fields.h"
#include "src/VideoWallState.h"

// The wall as a document, and back.

namespace nexwire::simulator {
namespace {

template <class Elements, class Make>
Json List(const Elements& elements, Allocator& memory, const Make& make)
{
    Json list(rapidjson::kArrayType);
    for (const auto& element : elements) {
        list.PushBack(make(element), memory);
    }
    return list;
}

std::string Text(const Json& object, std::string_view key)
{
    return std::string(AsText(Member(object, key)));
}

int Int(const Json& object, std::string_view key)
{
    return static_cast<int>(AsInt(Member(object, key)));
}

} // namespace

Json VideoWallState::Save(Allocator& memory) const
{
    const auto stream = [&](const auto& each) {
        return Fields(memory)
            .Number("sub", each.first)
            .Text("url", each.second.url)
            .Number("since", each.second.since)
            .Take();
    };
    const auto window = [&](const auto& each) {
        const Window& w = each.second;
        return Fields(memory)
            .Number("id", each.first)
            .Number("row", w.row)
            .Number("col", w.col)
            .Number("rowNum", w.rowNum)
            .Number("colNum", w.colNum)
            .Number("screens", w.screens)
            .Value("streams", List(w.streams, memory, stream))
            .Take();
    };
    const auto output = [&](const Output& o) {
        return Fields(memory)
            .Text("resolution", o.resolution)
            .Flag("bound", o.bound)
            .Number("row", o.row)
            .Number("col", o.col)
            .Flag("sound", o.sound)
            .Take();
    };
    const auto device = [&](const auto& each) {
        const Device& d = each.second;
        return Fields(memory)
            .Text("guid", each.first)
            .Text("username", d.username)
            .Text("password", d.password)
            .Text("address", d.address)
            .Number("port", d.port)
            .Text("alias", d.alias)
            .Text("serial", d.serial)
            .Number("loginAt", d.loginAt)
            .Value("outputs", List(d.outputs, memory, output))
            .Value("windows", List(d.windows, memory, window))
            .Take();
    };
    const auto camera = [&](const Camera& c) {
        return Fields(memory)
            .Text("cameraGuid", c.cameraGuid)
            .Text("cameraName", c.cameraName)
            .Text("deviceSerial", c.deviceSerial)
            .Number("channelNo", c.channelNo)
            .Text("url", c.url)
            .Text("streamKey", c.streamKey)
            .Text("guid", c.guid)
            .Number("cameraType", c.cameraType)
            .Number("share", c.share)
            .Flag("stopped", c.stopped)
            .Take();
    };
    const auto place = [&](const Place& p) {
        return Fields(memory)
            .Text("deviceGuid", p.deviceGuid)
            .Number("windowId", p.windowId)
            .Number("subNo", p.subNo)
            .Take();
    };
    const auto task = [&](const auto& each) {
        const Task& t = each.second;
        return Fields(memory)
            .Text("guid", each.first)
            .Value("scope", List(t.scope, memory, [&](const std::string& text) { return MakeText(text, memory); }))
            .Text("name", t.name)
            .Number("pollingTime", t.pollingTime)
            .Number("streamType", t.streamType)
            .Value("cameras", List(t.cameras, memory, camera))
            .Value("places", List(t.places, memory, place))
            .Number("run", static_cast<int>(t.run))
            .Number("step", t.step)
            .Number("since", t.since)
            .Take();
    };
    return Fields(memory)
        .Number("nextSerial", nextSerial_)
        .Number("nextWindow", nextWindow_)
        .Value("devices", List(devices_, memory, device))
        .Value("tasks", List(tasks_, memory, task))
        .Take();
}

void VideoWallState::Load(const Json& saved)
{
    nextSerial_ = Int(saved, "nextSerial");
    nextWindow_ = Int(saved, "nextWindow");
    for (const Json& from : Elements(Member(saved, "devices"))) {
        Device& device = devices_[Text(from, "guid")];
        device.username = Text(from, "username");
        device.password = Text(from, "password");
        device.address = Text(from, "address");
        device.port = Int(from, "port");
        device.alias = Text(from, "alias");
        device.serial = Text(from, "serial");
        device.loginAt = AsInt(Member(from, "loginAt"));
        for (const Json& each : Elements(Member(from, "outputs"))) {
            device.outputs.push_back({Text(each, "resolution"), AsBool(Member(each, "bound")), Int(each, "row"),
                                      Int(each, "col"), AsBool(Member(each, "sound"))});
        }
        for (const Json& each : Elements(Member(from, "windows"))) {
            Window& window = device.windows[Int(each, "id")];
            window.row = Int(each, "row");
            window.col = Int(each, "col");
            window.rowNum = Int(each, "rowNum");
            window.colNum = Int(each, "colNum");
            window.screens = Int(each, "screens");
            for (const Json& stream : Elements(Member(each, "streams"))) {
                window.streams[Int(stream, "sub")] = {Text(stream, "url"), AsInt(Member(stream, "since"))};
            }
        }
    }
    for (const Json& from : Elements(Member(saved, "tasks"))) {
        Task& task = tasks_[Text(from, "guid")];
        std::size_t at = 0;
        for (const Json& scope : Elements(Member(from, "scope"))) {
            task.scope.at(at++) = AsText(&scope);
        }
        task.name = Text(from, "name");
        task.pollingTime = Int(from, "pollingTime");
        task.streamType = Int(from, "streamType");
        for (const Json& each : Elements(Member(from, "cameras"))) {
            task.cameras.push_back({Text(each, "cameraGuid"), Text(each, "cameraName"), Text(each, "deviceSerial"),
                                    Int(each, "channelNo"), Text(each, "url"), Text(each, "streamKey"),
                                    Text(each, "guid"), Int(each, "cameraType"), Int(each, "share"),
                                    AsBool(Member(each, "stopped"))});
        }
        for (const Json& each : Elements(Member(from, "places"))) {
            task.places.push_back({Text(each, "deviceGuid"), Int(each, "windowId"), Int(each, "subNo")});
        }
        task.run = static_cast<Run>(Int(from, "run"));
        task.step = AsInt(Member(from, "step"));
        task.since = AsInt(Member(from, "since"));
    }
}

} // namespace nexwire::simulator

#include <algorithm>
#include <deque>
#include <map>

#include "src/Clock.h"
#include "src/Fields.h"
#include "src/Rules.h"
#include "src/Services.h"

namespace nexwire::simulator {
namespace {

constexpr const char* kNodes = "nodes";
constexpr const char* kLines = "lines";
constexpr const char* kGuards = "portSecurity";
constexpr const char* kState = "topology";

constexpr const char* kGateway = "70000000000000000000000000000001";
constexpr const char* kCore = "70000000000000000000000000000002";
constexpr const char* kServer = "70000000000000000000000000000003";
constexpr const char* kFirstAccessSwitch = "7000000000000000000000000000001";
constexpr std::int64_t kPortsPerSwitch = 8;
constexpr std::int64_t kMsPerNode = 150;

enum NodeType { kServerNode = 1, kSwitchNode = 2, kControllerNode = 5, kGatewayNode = 6 };
enum RefreshState { kNone = 0, kRunning = 1, kDone = 2 };
enum Alarm { kLinkLost = 1, kStranger = 3 };

std::string MacOf(std::int64_t number)
{
    char text[24];
    std::snprintf(text, sizeof text, "02:00:5E:10:%02X:%02X", static_cast<unsigned>(number / 256 % 256),
                  static_cast<unsigned>(number % 256));
    return text;
}

/// Looks through the network: the nodes and the lines between them, as the devices stand now.
class Discovery {
public:
    explicit Discovery(Handling& handling) : handling_(handling) {}

    void Run()
    {
        for (const char* collection : {kNodes, kLines}) {
            handling_.Each({collection},
                           [&](const std::string& key, Json&) { handling_.store.Erase(collection, key); });
        }
        Add(kGateway, "Gateway", kGatewayNode, "192.0.2.1", "", true);
        Add(kCore, "Core switch", kSwitchNode, "192.0.2.2", "", true);
        Add(kServer, "Platform", kServerNode, "192.0.2.3", "", true);
        Connect(kGateway, kCore, true);
        Connect(kCore, kServer, true);
        std::int64_t placed = 0;
        std::string access;
        handling_.Each({kDevices}, [&](const std::string& guid, Json& device) {
            if (placed++ % kPortsPerSwitch == 0) {
                const std::int64_t number = placed / kPortsPerSwitch + 1;
                access = kFirstAccessSwitch + std::to_string(number % 10);
                Add(access, "Access switch " + std::to_string(number), kSwitchNode,
                    "192.0.2." + std::to_string(3 + number), "", true);
                Connect(kCore, access, true);
            }
            const Json* name = Member(device, "name");
            const bool online = OutOfReach(handling_, guid) == Reason::kNone;
            Add(guid, AsText(name != nullptr ? name : Member(device, "deviceName")), kControllerNode,
                AsText(Member(device, "address")), guid, online);
            Connect(access, guid, online);
        });
        for (auto& [guid, node] : nodes_) {
            handling_.Save(kNodes, guid, node);
        }
    }

private:
    void Add(std::string_view guid, std::string_view name, NodeType type, std::string_view address,
             std::string_view device, bool online)
    {
        ++number_;
        nodes_[std::string(guid)] = Fields(handling_.Memory())
                                        .Text("nodeGuid", guid)
                                        .Text("nodeName", name)
                                        .Text("parentNodeGuid", "")
                                        .Text("deviceGuid", device)
                                        .Number("nodeType", type)
                                        .Number("nodeStatus", online ? 1 : 2)
                                        .Text("address", address)
                                        .Text("macAddress", MacOf(number_))
                                        .Text("model", type == kSwitchNode ? "24 ports" : "")
                                        .Number("hops", 0)
                                        .Value("nodePortList", Json(rapidjson::kArrayType))
                                        .Take();
    }

    std::int64_t AddPort(const std::string& guid, const std::string& peer, bool up)
    {
        Json& ports = *Member(nodes_[guid], "nodePortList");
        const std::int64_t number = ports.Size() + 1;
        ports.PushBack(Fields(handling_.Memory())
                           .Number("portNo", number)
                           .Text("portName", "Port " + std::to_string(number))
                           .Number("portStatus", up ? 1 : 0)
                           .Number("speed", up ? 1000 : 0)
                           .Number("load", up ? 5 + number * 7 % 40 : 0)
                           .Value("poePower", Json(up ? 6.5 : 0.0))
                           .Text("peerNodeGuid", peer)
                           .Take(),
                       handling_.Memory());
        return number;
    }

    void Connect(const std::string& begin, const std::string& end, bool up)
    {
        const std::string guid = "7100000000000000000000000000" + std::to_string(1000 + ++lines_);
        const std::int64_t beginPort = AddPort(begin, end, up);
        const std::int64_t endPort = AddPort(end, begin, up);
        handling_.Save(kLines, guid,
                       Fields(handling_.Memory())
                           .Text("lineGuid", guid)
                           .Text("beginNodeGuid", begin)
                           .Number("beginPortNo", beginPort)
                           .Text("endNodeGuid", end)
                           .Number("endPortNo", endPort)
                           .Number("bandwidth", 1000)
                           .Number("inRate", up ? 1200000 + lines_ * 10000 : 0)
                           .Number("outRate", up ? 800000 + lines_ * 10000 : 0)
                           .Number("lineStatus", up ? 1 : 2)
                           .Take());
    }

    Handling& handling_;
    std::map<std::string, Json> nodes_;
    std::int64_t number_ = 0;
    std::int64_t lines_ = 0;
};

/// Gives every node its way to the root: the node before it, and how far it is.
void Arrange(Handling& handling, const std::string& root)
{
    std::multimap<std::string, std::string> neighbours;
    handling.Each({kLines}, [&](const std::string&, Json& line) {
        const std::string begin(AsText(Member(line, "beginNodeGuid")));
        const std::string end(AsText(Member(line, "endNodeGuid")));
        neighbours.emplace(begin, end);
        neighbours.emplace(end, begin);
    });
    std::map<std::string, std::pair<std::string, std::int64_t>> way = {{root, {"", 0}}};
    for (std::deque<std::string> open = {root}; !open.empty(); open.pop_front()) {
        const std::string at = open.front();
        const auto [first, last] = neighbours.equal_range(at);
        for (auto next = first; next != last; ++next) {
            if (way.emplace(next->second, std::make_pair(at, way[at].second + 1)).second) {
                open.push_back(next->second);
            }
        }
    }
    handling.Each({kNodes}, [&](const std::string& guid, Json& node) {
        const auto found = way.find(guid);
        Fields(node, handling.Memory())
            .Text("parentNodeGuid", found == way.end() ? "" : found->second.first)
            .Number("hops", found == way.end() ? 0 : found->second.second);
        handling.Save(kNodes, guid, node);
    });
}

Json State(Handling& handling)
{
    Json state = handling.Load(kState, kState);
    return state.IsNull() ? Json(rapidjson::kObjectType) : std::move(state);
}

std::string RootOf(const Json& state)
{
    return std::string(AsText(Member(state, "root"), kCore));
}

std::int64_t WorkOf(Handling& handling)
{
    return handling.store.Count({kDevices}) + 4;
}

/// A fresh platform knows its network; a refresh that has come to its end has found what there is then.
void Settle(Handling& handling, double timeScale)
{
    Json state = State(handling);
    const std::int64_t started = AsInt(Member(state, "startedMs"));
    const bool first = Member(state, "seen") == nullptr;
    const double needed = static_cast<double>(WorkOf(handling) * kMsPerNode) / timeScale;
    const bool through =
        AsInt(Member(state, "refreshState")) == kRunning && static_cast<double>(handling.nowMs - started) >= needed;
    if (!first && !through) {
        return;
    }
    Discovery(handling).Run();
    Arrange(handling, RootOf(state));
    Fields(state, handling.Memory()).Flag("seen", true).Number("refreshState", through ? kDone : kNone);
    handling.Save(kState, kState, state);
}

void Refresh(Handling& handling, double timeScale)
{
    Json state = State(handling);
    if (AsBool(Member(*handling.body, "isReset"))) {
        Fields(state, handling.Memory()).Number("startedMs", handling.nowMs).Number("refreshState", kRunning);
        handling.Save(kState, kState, state);
    }
    const std::int64_t work = WorkOf(handling);
    const bool running = AsInt(Member(state, "refreshState")) == kRunning;
    const double elapsed = static_cast<double>(handling.nowMs - AsInt(Member(state, "startedMs"))) * timeScale;
    const std::int64_t found = std::min<std::int64_t>(
        work, running ? static_cast<std::int64_t>(elapsed / static_cast<double>(kMsPerNode)) : work);
    const std::int64_t started = AsInt(Member(state, "startedMs"));
    handling.data = Fields(handling.Memory())
                        .Value("progress", Fields(handling.Memory())
                                               .Number("percent", running ? found * 100 / work : 100)
                                               .Same("refreshState", state)
                                               .Number("nodeNum", running ? found : handling.store.Count({kNodes}))
                                               .Number("lineNum", running ? found : handling.store.Count({kLines}))
                                               .Text("beginTime", started == 0 ? "" : IsoTime(started))
                                               .Take())
                        .Take();
}

void SetRoot(Handling& handling)
{
    const std::string root = handling.NeedText(*handling.body, "nodeGuid");
    handling.Need(*handling.description.FindCollection(kNodes), root);
    Json state = State(handling);
    Fields(state, handling.Memory()).Text("root", root);
    handling.Save(kState, kState, state);
    Arrange(handling, root);
    Json list(rapidjson::kArrayType);
    handling.Each({kNodes}, [&](const std::string&, Json& node) { list.PushBack(std::move(node), handling.Memory()); });
    handling.data = Fields(handling.Memory()).Value("deviceNodeList", std::move(list)).Take();
}

void GetRoot(Handling& handling)
{
    const Json node = handling.Load(kNodes, RootOf(State(handling)));
    handling.data =
        Fields(handling.Memory()).Same("nodeGuid", node).Same("nodeName", node).Same("address", node).Take();
}

/// Devices behind a guarded port that are not on its list.
std::int64_t Strangers(Handling& handling, const Json& guard)
{
    if (!AsBool(Member(guard, "enable"))) {
        return 0;
    }
    const auto known = Elements(Member(guard, "macAddressList"));
    const Json node = handling.Load(kNodes, AsText(Member(guard, "nodeGuid")));
    std::int64_t strangers = 0;
    for (const Json& port : Elements(Member(node, "nodePortList"))) {
        const Json peer = handling.Load(kNodes, AsText(Member(port, "peerNodeGuid")));
        if (AsInt(Member(port, "portNo")) != AsInt(Member(guard, "portNo")) || peer.IsNull() || known.Empty()) {
            continue;
        }
        const std::string_view mac = AsText(Member(peer, "macAddress"));
        strangers +=
            std::any_of(known.begin(), known.end(), [&](const Json& each) { return AsText(&each) == mac; }) ? 0 : 1;
    }
    return strangers;
}

void Guard(Handling& handling)
{
    for (const Json& item : Elements(Member(*handling.body, "portSecurityItemList"))) {
        const std::string node(AsText(Member(item, "nodeGuid")));
        handling.Need(*handling.description.FindCollection(kNodes), node);
        handling.Save(kGuards, node + "/" + std::to_string(AsInt(Member(item, "portNo"))), item);
    }
}

void Guards(Handling& handling)
{
    Json list(rapidjson::kArrayType);
    handling.Each({kGuards}, [&](const std::string&, Json& guard) {
        const std::int64_t strangers = Strangers(handling, guard);
        Fields(guard, handling.Memory()).Number("violationNum", strangers);
        list.PushBack(std::move(guard), handling.Memory());
    });
    handling.data = Fields(handling.Memory()).Value("portSecurityStateList", std::move(list)).Take();
}

void PortAlarms(Handling& handling)
{
    const std::string guid(handling.Identifier("1"));
    const Json node = handling.Need(*handling.description.FindCollection(kNodes), guid);
    Json list(rapidjson::kArrayType);
    const auto add = [&](std::int64_t port, Alarm type, std::string_view description) {
        const std::string alarm = guid.substr(0, 24) + std::to_string(10000000 + port * 10 + type);
        list.PushBack(Fields(handling.Memory())
                          .Text("alarmGuid", alarm)
                          .Text("nodeGuid", guid)
                          .Number("portNo", port)
                          .Number("alarmType", type)
                          .Number("alarmState", 1)
                          .Text("alarmTime", IsoTime(handling.nowMs))
                          .Text("description", description)
                          .Take(),
                      handling.Memory());
    };
    for (const Json& port : Elements(Member(node, "nodePortList"))) {
        if (AsInt(Member(port, "portStatus")) == 0) {
            add(AsInt(Member(port, "portNo")), kLinkLost, "the link is lost");
        }
    }
    handling.Each({kGuards, {{"nodeGuid", Test::kEquals, StoreValue(guid)}}}, [&](const std::string&, Json& guard) {
        constexpr std::int64_t kDropSilently = 0;
        if (AsInt(Member(guard, "violationAction")) != kDropSilently && Strangers(handling, guard) > 0) {
            add(AsInt(Member(guard, "portNo")), kStranger, "a stranger at a guarded port");
        }
    });
    handling.data = Fields(handling.Memory()).Value("switchAlarmList", std::move(list)).Take();
}

} // namespace

void AddTopology(Services& services, double timeScale)
{
    services["settleTopology"] = [timeScale](Handling& handling) { Settle(handling, timeScale); };
    services["refreshTopology"] = [timeScale](Handling& handling) { Refresh(handling, timeScale); };
    services["setTopologyRoot"] = SetRoot;
    services["getTopologyRoot"] = GetRoot;
    services["guardPorts"] = Guard;
    services["guardedPorts"] = Guards;
    services["portAlarms"] = PortAlarms;
}

} // namespace nexwire::simulator

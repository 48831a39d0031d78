#include "src/Fields.h"
#include "src/VideoWallState.h"

// The wall as a document, and back.

namespace nexwire::simulator {

/// What is kept of everything, said once for both ways: a way takes a key and what stands under it.
class VideoWallState::Keeping {
    template <class Way, class T>
    using Of = typename std::decay_t<Way>::template Of<T>;

public:
    /// Into a document.
    class Writer {
    public:
        template <class T>
        using Of = const T;

        explicit Writer(Allocator& memory) : memory_(memory), fields_(memory) {}

        void Value(std::string_view key, const std::string& text) { fields_.Text(key, text); }
        void Value(std::string_view key, bool flag) { fields_.Flag(key, flag); }
        void Value(std::string_view key, std::int64_t number) { fields_.Number(key, number); }
        void Value(std::string_view key, int number) { fields_.Number(key, number); }
        void Value(std::string_view key, Run run) { fields_.Number(key, static_cast<int>(run)); }
        void Value(std::string_view key, const std::array<std::string, 3>& texts)
        {
            List(key, texts, [this](const std::string& text) { return MakeText(text, memory_); });
        }
        template <class T>
        void Value(std::string_view key, const std::vector<T>& elements)
        {
            List(key, elements, [this](const T& element) {
                Writer each(memory_);
                Members(each, element);
                return each.Take();
            });
        }
        /// Elements whose name in the map stands under the key `name`.
        template <class Name, class T>
        void Map(std::string_view key, std::string_view name, const std::map<Name, T>& elements)
        {
            List(key, elements, [this, name](const std::pair<const Name, T>& element) {
                Writer each(memory_);
                each.Value(name, element.first);
                Members(each, element.second);
                return each.Take();
            });
        }
        Json Take() { return fields_.Take(); }

    private:
        template <class Elements, class Make>
        void List(std::string_view key, const Elements& elements, const Make& make)
        {
            Json list(rapidjson::kArrayType);
            for (const auto& element : elements) {
                list.PushBack(make(element), memory_);
            }
            fields_.Value(key, std::move(list));
        }

        Allocator& memory_;
        Fields fields_;
    };

    /// Out of one.
    class Reader {
    public:
        template <class T>
        using Of = T;

        explicit Reader(const Json& from) : from_(from) {}

        void Value(std::string_view key, std::string& text) const { text = AsText(Member(from_, key)); }
        void Value(std::string_view key, bool& flag) const { flag = AsBool(Member(from_, key)); }
        void Value(std::string_view key, std::int64_t& number) const { number = AsInt(Member(from_, key)); }
        void Value(std::string_view key, int& number) const { number = static_cast<int>(AsInt(Member(from_, key))); }
        void Value(std::string_view key, Run& run) const { run = static_cast<Run>(AsInt(Member(from_, key))); }
        void Value(std::string_view key, std::array<std::string, 3>& texts) const
        {
            std::size_t at = 0;
            for (const Json& text : Elements(Member(from_, key))) {
                texts.at(at++) = AsText(&text);
            }
        }
        template <class T>
        void Value(std::string_view key, std::vector<T>& elements) const
        {
            for (const Json& element : Elements(Member(from_, key))) {
                Members(Reader(element), elements.emplace_back());
            }
        }
        template <class Name, class T>
        void Map(std::string_view key, std::string_view name, std::map<Name, T>& elements) const
        {
            for (const Json& element : Elements(Member(from_, key))) {
                const Reader each(element);
                Name named{};
                each.Value(name, named);
                Members(each, elements[named]);
            }
        }

    private:
        const Json& from_;
    };

    template <class Way>
    static void Members(Way&& way, Of<Way, VideoWallState>& wall)
    {
        way.Value("nextSerial", wall.nextSerial_);
        way.Value("nextWindow", wall.nextWindow_);
        way.Map("devices", "guid", wall.devices_);
        way.Map("tasks", "guid", wall.tasks_);
    }

private:
    template <class Way>
    static void Members(Way&& way, Of<Way, Device>& device)
    {
        way.Value("username", device.username);
        way.Value("password", device.password);
        way.Value("address", device.address);
        way.Value("port", device.port);
        way.Value("alias", device.alias);
        way.Value("serial", device.serial);
        way.Value("loginAt", device.loginAt);
        way.Value("outputs", device.outputs);
        way.Map("windows", "id", device.windows);
    }

    template <class Way>
    static void Members(Way&& way, Of<Way, Output>& output)
    {
        way.Value("resolution", output.resolution);
        way.Value("bound", output.bound);
        way.Value("row", output.row);
        way.Value("col", output.col);
        way.Value("sound", output.sound);
    }

    template <class Way>
    static void Members(Way&& way, Of<Way, Window>& window)
    {
        way.Value("row", window.row);
        way.Value("col", window.col);
        way.Value("rowNum", window.rowNum);
        way.Value("colNum", window.colNum);
        way.Value("screens", window.screens);
        way.Map("streams", "sub", window.streams);
    }

    template <class Way>
    static void Members(Way&& way, Of<Way, Stream>& stream)
    {
        way.Value("url", stream.url);
        way.Value("since", stream.since);
    }

    template <class Way>
    static void Members(Way&& way, Of<Way, Task>& task)
    {
        way.Value("scope", task.scope);
        way.Value("name", task.name);
        way.Value("pollingTime", task.pollingTime);
        way.Value("streamType", task.streamType);
        way.Value("cameras", task.cameras);
        way.Value("places", task.places);
        way.Value("run", task.run);
        way.Value("step", task.step);
        way.Value("since", task.since);
    }

    template <class Way>
    static void Members(Way&& way, Of<Way, Camera>& camera)
    {
        way.Value("cameraGuid", camera.cameraGuid);
        way.Value("cameraName", camera.cameraName);
        way.Value("deviceSerial", camera.deviceSerial);
        way.Value("channelNo", camera.channelNo);
        way.Value("url", camera.url);
        way.Value("streamKey", camera.streamKey);
        way.Value("guid", camera.guid);
        way.Value("cameraType", camera.cameraType);
        way.Value("share", camera.share);
        way.Value("stopped", camera.stopped);
    }

    template <class Way>
    static void Members(Way&& way, Of<Way, Place>& place)
    {
        way.Value("deviceGuid", place.deviceGuid);
        way.Value("windowId", place.windowId);
        way.Value("subNo", place.subNo);
    }
};

Json VideoWallState::Save(Allocator& memory) const
{
    Keeping::Writer way(memory);
    Keeping::Members(way, *this);
    return way.Take();
}

void VideoWallState::Load(const Json& saved)
{
    Keeping::Members(Keeping::Reader(saved), *this);
}

} // namespace nexwire::simulator

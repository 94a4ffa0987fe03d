#include "Talk.h"

#include <voro/PpsObject.h>

#include <QtCore/QJsonDocument>

#include <unistd.h>

using namespace voro;

namespace {

constexpr int Patience = 20'000;

QByteArray toJson(const QVariantMap &map)
{
    QByteArray json = QJsonDocument::fromVariant(map).toJson(QJsonDocument::Compact);
    return json.replace("pid\":" + QByteArray::number(getpid()), "pid\":PID")
        .replace("\"dat\":" + QByteArray::number(getpid()), "\"dat\":PID");
}

} // namespace

QByteArray track(const QByteArray &data)
{
    return R"({"dat":)" + data + R"(,"msg":"track"})";
}

QByteArray failure(const QByteArray &command, const QByteArray &problem)
{
    return R"({"err":")" + problem + R"(","error":")" + problem + R"(","res":")" + command + "\"}";
}

Talk::Talk(const char *path) : m_isController(qstrcmp(path, ControllerControl) == 0)
{
    if (!m_connection.open(path, pps::PublishSubscribe)) {
        qFatal("cannot open %s", path);
    }
}

void Talk::write(const QByteArray &lines)
{
    if (!m_connection.write(QByteArray(lines).replace('|', '\n').toStdString())) {
        qFatal("cannot write");
    }
}

QVariantMap Talk::nextMap()
{
    std::string text;
    bool isGood = false;
    if (!m_connection.readWithin(text, Patience)) {
        return {{m_connection.error() == ETIMEDOUT ? "none" : "end", true}};
    }
    const QVariantMap map = PpsObject::decode(QByteArray::fromStdString(text), &isGood).value("@control").toMap();
    if (!isGood) {
        qFatal("a bad message: %s", text.c_str());
    }
    return map;
}

QByteArray Talk::next()
{
    const QVariantMap map = nextMap();
    return map.contains("none") ? "NOTHING" : map.contains("end") ? "END" : toJson(map);
}

QByteArrayList Talk::rest()
{
    write(m_isController ? "msg::barrier" : "msg::register|dat::barrier");
    if (!m_isController) {
        write("msg::acquire");
    }
    const QByteArray barrier = m_isController ? R"({"err":"unknown message","error":"unknown message","res":"barrier"})"
                                              : R"({"err":"bad name","res":"acquire"})";
    QByteArrayList messages;
    for (QByteArray message = next(); message != barrier && message != "END" && message != "NOTHING";
         message = next()) {
        messages += message;
    }
    return messages;
}

bool Talk::waitFor(const QByteArray &message)
{
    QByteArray found;
    do {
        found = next();
    } while (found != message && found != "END" && found != "NOTHING");
    return found == message;
}

void Talk::acquire(const QByteArray &name, const QByteArray &priority)
{
    write("msg::register|dat:json:{\"name\":\"" + name + "\",\"prio\":\"" + priority + "\"}");
    write("msg::acquire|id::" + name);
}

QByteArray roleStatus()
{
    pps::Connection status;
    std::string text;
    if (!status.open(PlayerStatus, pps::Subscribe) || !status.read(text, false)) {
        qFatal("no status");
    }
    const QVariantMap map = PpsObject::decode(QByteArray::fromStdString(text)).value("@status").toMap();
    return toJson({{"name", map.value("active_name")}, {"pid", map.value("active_pid")}});
}

QByteArray update(const QVariantMap &fields)
{
    QVariantMap map{{"artist", ""},         {"album", ""},           {"track", ""},           {"track_number", ""},
                    {"albumArtwork", ""},   {"repeat_mode", "none"}, {"shuffle_mode", "off"}, {"nextEnabled", false},
                    {"prevEnabled", false}, {"position", 0},         {"duration", 0}};
    for (auto field = fields.cbegin(); field != fields.cend(); ++field) {
        map.insert(field.key(), field.value());
    }
    return toJson({{"msg", "md_update"}, {"dat", map}});
}

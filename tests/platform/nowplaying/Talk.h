#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QVariant>

#include <pps/Connection.h>

inline constexpr auto PlayerControl = "/pps/services/multimedia/mediaplayer/control";
inline constexpr auto PlayerStatus = "/pps/services/multimedia/mediaplayer/status";
inline constexpr auto ControllerControl = "/pps/services/multimedia/mediacontroller/control";

/** Messages of the services, as a client reads them. */
inline const QByteArray Granted(R"({"res":"acquire"})");
inline const QByteArray Send(R"({"dat":"sendData","msg":"track"})");
inline const QByteArray Hold(R"({"dat":"holdData","msg":"track"})");
inline const QByteArray Free(R"({"dat":0,"msg":"m_active_pid"})");
inline const QByteArray Ours(R"({"dat":PID,"msg":"m_active_pid"})");
inline const QByteArray Playing(R"({"dat":"playing","msg":"m_state"})");
inline const QByteArray Paused(R"({"dat":"paused","msg":"m_state"})");
inline const QByteArray Stopped(R"({"dat":"stopped","msg":"m_state"})");
inline const QByteArray TrackChange(R"({"dat":"trackchange","msg":"m_state"})");
/** The command that the holder reads; `data` is JSON. */
QByteArray track(const QByteArray &data);
/** The answer to a command that failed. */
QByteArray failure(const QByteArray &command, const QByteArray &problem);

/** A client of one of the services: writes messages and reads what comes back. */
class Talk {
public:
    /** Opens the service; ends the test program when that fails. */
    explicit Talk(const char *path = ControllerControl);

    /** Writes a message, its lines separated by '|'. */
    void write(const QByteArray &lines);
    /**
     * Waits for the next message and returns it as JSON, with this process's id as "PID"; "END" when there is no more,
     * "NOTHING" when none comes.
     */
    QByteArray next();
    /** The same as a map. */
    QVariantMap nextMap();
    /** What comes before the service has answered; the client must not be waiting for anything else. */
    QByteArrayList rest();

    /** Registers under the name and asks for the role. */
    void acquire(const QByteArray &name, const QByteArray &priority = "low");
    void subscribe() { write("msg::md_subscribe"); }
    /** Reads messages until one is this. */
    bool waitFor(const QByteArray &message);

private:
    const bool m_isController;
    voro::pps::Connection m_connection;
};

/** The present status as JSON: the holder's name and process. */
QByteArray roleStatus();

/** An "md_update" as JSON, as it is without anything but these fields. */
QByteArray update(const QVariantMap &fields = {});

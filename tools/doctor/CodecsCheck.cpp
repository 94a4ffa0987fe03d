#include "CodecsCheck.h"

#include <QtCore/QFile>
#include <QtCore/QStringList>

#include <algorithm>
#include <array>
#include <utility>

namespace voro::doctor {

namespace {

constexpr char Base[] = "gstreamer1.0-plugins-base";
constexpr char Good[] = "gstreamer1.0-plugins-good";
constexpr char Bad[] = "gstreamer1.0-plugins-bad";
constexpr char Ugly[] = "gstreamer1.0-plugins-ugly";
constexpr char Libav[] = "gstreamer1.0-libav";
constexpr char X[] = "gstreamer1.0-x";

struct Plugin {
    const char *name = nullptr;
    /** The Debian package that it is in. */
    const char *package = nullptr;
    /** Another one that does as well. */
    const char *substitute = nullptr;
};

struct Format {
    const char *name;
    std::array<Plugin, 3> plugins;
};

constexpr Plugin Ogg{"ogg", Base};
constexpr Plugin Vorbis{"vorbis", Base};
constexpr Plugin Opus{"opus", Base};
constexpr Plugin Flac{"flac", Good};
constexpr Plugin Parsers{"audioparsers", Good};
constexpr Plugin Mp4{"isomp4", Good};
constexpr Plugin Matroska{"matroska", Good};

constexpr std::array Needed{
    Format{"nothing plays", {{{"playback", Base}, {"audioconvert", Base}, {"audioresample", Base}}}},
    Format{"nothing is heard", {{{"pulseaudio", Good}, {"volume", Base}}}},
};

constexpr std::array Played{
    Format{"WAV", {{{"wavparse", Good}}}},
    Format{"FLAC", {{Flac, Parsers}}},
    Format{"MP3", {{{"mpg123", Good}, {"id3demux", Good}, Parsers}}},
    Format{"Vorbis", {{Ogg, Vorbis}}},
    Format{"Opus", {{Ogg, Opus}}},
    Format{"AAC", {{Mp4, Parsers, {"faad", Bad, "libav"}}}},
    Format{"H.264", {{Mp4, Matroska, {"libav", Libav, "openh264"}}}},
    Format{"H.265", {{Mp4, Matroska, {"libav", Libav}}}},
    Format{"MPEG-4", {{{"avi", Good}, {"libav", Libav}}}},
    Format{"VP8 and VP9", {{Matroska, {"vpx", Good, "libav"}}}},
    Format{"AV1", {{Matroska, {"aom", Bad, "dav1d"}}}},
    Format{"Theora", {{Ogg, {"theora", Base, "libav"}}}},
};

constexpr std::array Recorded{
    Format{"ogg", {{Ogg, Vorbis}}},
    Format{"opus", {{Ogg, Opus}}},
    Format{"flac", {{Flac}}},
    Format{"mp3", {{{"lame", Good}}}},
    Format{"m4a", {{{"voaacenc", Bad}, Parsers, Mp4}}},
    Format{"amr", {{{"amrnb", Ugly}}}},
};

constexpr std::array Others{
    Format{"media from the net do not play", {{{"soup", Good}}}},
    Format{"captions are not shown", {{{"subparse", Base}, {"pango", X}}}},
    Format{"there is no equalizer", {{{"equalizer", Good}}}},
    Format{"films play with sound alone in X11 windows", {{{"ximagesink", X}}}},
};

/** Collects what the plugins in a folder are enough for. */
class Survey {
public:
    explicit Survey(QString folder) : m_folder(std::move(folder)) {}

    /** Says of each format that lacks something what follows, with %1 for its name; returns the names of the others. */
    template<typename Formats>
    QString look(const Formats &formats, Health health, const QString &consequence)
    {
        QStringList complete;
        for (const Format &format : formats) {
            const QString name = QLatin1String(format.name);
            const auto missing = std::find_if(format.plugins.begin(), format.plugins.end(),
                                              [this](const Plugin &plugin) { return isMissing(plugin); });
            if (missing == format.plugins.end()) {
                complete.append(name);
                continue;
            }
            m_findings.push_back(
                {health, consequence.arg(name) + QLatin1String(": there is no plugin ") + QLatin1String(missing->name),
                 QLatin1String("apt install ") + QLatin1String(missing->package)});
        }
        return complete.join(QLatin1String(", "));
    }

    void add(Finding finding) { m_findings.push_back(std::move(finding)); }
    std::vector<Finding> take() { return std::move(m_findings); }

private:
    bool has(const char *plugin) const
    {
        return QFile::exists(QStringLiteral("%1/libgst%2.so").arg(m_folder, QLatin1String(plugin)));
    }

    bool isMissing(const Plugin &plugin) const
    {
        return plugin.name && !has(plugin.name) && !(plugin.substitute && has(plugin.substitute));
    }

    const QString m_folder;
    std::vector<Finding> m_findings;
};

} // namespace

CodecsCheck::CodecsCheck() : CodecsCheck(QStringLiteral(VORO_MEDIA_PLUGINS)) {}

std::vector<Finding> CodecsCheck::examine() const
{
    Survey survey(m_plugins);
    survey.look(Needed, Health::Missing, QStringLiteral("%1"));
    const QString played = survey.look(Played, Health::Limited, QStringLiteral("%1 plays from files only, if at all"));
    const QString recorded = survey.look(Recorded, Health::Limited, QStringLiteral("%1 cannot be recorded"));
    survey.look(Others, Health::Limited, QStringLiteral("%1"));
    if (!played.isEmpty()) {
        survey.add({Health::Good, QLatin1String("there are plugins to play ") + played});
    }
    survey.add({Health::Good, QLatin1String("there are plugins to record wav")
                                  + (recorded.isEmpty() ? QString() : QLatin1String(", ") + recorded)});
    return survey.take();
}

} // namespace voro::doctor

/* The holder of the now-playing role. */

#include "Source.h"

#include <multimedia/MetaData.h>
#include <multimedia/NowPlayingConnection.h>

#include <QtCore/QCoreApplication>

using namespace voro::multimedia;

namespace {

class Connection : public bench::Source {
public:
    bool acquire()
    {
        QObject::connect(&m_connection, &NowPlayingConnection::next, bench::tellNext);
        m_connection.setDuration(bench::DurationMs);
        m_connection.setIconUrl(QUrl(bench::Artwork));
        return m_connection.acquire() == MediaError::None;
    }
    void publish(const QString &title) override
    {
        m_connection.setMetaData({{MetaData::Title, title},
                                  {MetaData::Artist, bench::Artist},
                                  {MetaData::Album, bench::Album},
                                  {MetaData::Track, bench::Track}});
    }
    void turn(const QString &title) override
    {
        const bool isPlaying = m_connection.mediaState() == MediaState::Started;
        m_connection.setMediaState(isPlaying ? MediaState::Paused : MediaState::Started);
        publish(title);
    }

private:
    NowPlayingConnection m_connection;
};

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    Connection source;
    return source.acquire() ? bench::obeyInput(source) : 1;
}

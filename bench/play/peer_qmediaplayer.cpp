/* The peer QMediaPlayer, with the backend that it chooses by itself. */

#include "Lines.h"
#include "Peer.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEventLoop>
#include <QtCore/QUrl>
#include <QtMultimedia/QAudioOutput>
#include <QtMultimedia/QMediaPlayer>

#include <memory>
#include <string>
#include <vector>

namespace {

struct Player {
    QAudioOutput output;
    QMediaPlayer player;

    Player() { player.setAudioOutput(&output); }
    void setSource(const std::string &uri) { player.setSource(QUrl(QString::fromStdString(uri))); }
};

class QtPeer : public bench::Peer {
public:
    void play(const std::string &uri) override
    {
        m_player.setSource(uri);
        m_player.player.play();
    }
    void seek(int milliseconds) override { m_player.player.setPosition(milliseconds); }
    void stop() override { m_player.player.stop(); }
    void prepare(const std::string &uri) override
    {
        m_prepared.push_back(std::make_unique<Player>());
        QMediaPlayer &player = m_prepared.back()->player;
        m_prepared.back()->setSource(uri);
        QEventLoop loop;
        QObject::connect(&player, &QMediaPlayer::mediaStatusChanged, &loop, &QEventLoop::quit);
        player.pause();
        while (player.mediaStatus() == QMediaPlayer::LoadingMedia) {
            loop.exec();
        }
    }

private:
    Player m_player;
    std::vector<std::unique_ptr<Player>> m_prepared;
};

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QtPeer peer;
    bench::tellReady();
    return bench::obeyLines([&peer](const std::string &line) { bench::obey(peer, line); });
}

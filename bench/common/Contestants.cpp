#include "Contestants.h"

#include "Figures.h"

#include <multimedia/MediaPlayer.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QUrl>

#include <cstdio>
#include <cstdlib>

using namespace voro::multimedia;

namespace bench {

void must(int mediaError)
{
    if (mediaError == MediaError::None) {
        return;
    }
    std::fprintf(stderr, "the player failed: %d\n", mediaError);
    std::exit(1);
}

void silenceLibrary()
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
}

Ours::Ours()
{
    silenceLibrary();
    renew();
}

Ours::~Ours() = default;

int64_t Ours::play(const std::string &path)
{
    const int64_t asked = now();
    must(m_player->setSourceUrl(QUrl::fromLocalFile(QString::fromStdString(path))));
    must(m_player->play());
    return asked;
}

int64_t Ours::seek(int milliseconds)
{
    const int64_t asked = now();
    must(m_player->seekTime(static_cast<unsigned int>(milliseconds)));
    return asked;
}

void Ours::stop()
{
    must(m_player->reset());
    QCoreApplication::processEvents();
}

void Ours::renew()
{
    m_player = std::make_unique<MediaPlayer>();
}

std::string program(const std::string &name)
{
    return QCoreApplication::applicationDirPath().toStdString() + '/' + name;
}

PeerProcess::PeerProcess(const std::string &name, Kept kept) : m_name(name), m_kept(kept)
{
    renew();
}

void PeerProcess::renew()
{
    m_child.reset();
    m_child = std::make_unique<Child>(std::vector{program("peer_" + m_name)});
    m_child->line();
}

std::string PeerProcess::name() const
{
    return m_kept == Kept::Cold ? m_name + ", cold" : m_name;
}

int64_t PeerProcess::ask(const std::string &line)
{
    m_child->send(line);
    return std::atoll(m_child->line().c_str());
}

int64_t PeerProcess::play(const std::string &path)
{
    return ask("play file://" + path);
}

int64_t PeerProcess::seek(int milliseconds)
{
    return ask("seek " + std::to_string(milliseconds));
}

void PeerProcess::stop()
{
    ask("stop");
    if (m_kept == Kept::Cold) {
        renew();
    }
}

void PeerProcess::prepare(const std::string &path)
{
    ask("prepare file://" + path);
}

} // namespace bench

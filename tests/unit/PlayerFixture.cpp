#include "PlayerFixture.h"

using namespace voro::multimedia;

void withSource(PlayerFixture &f)
{
    f.media.setSourceUrl(QUrl(QStringLiteral("file:///music/a.ogg")));
}

void prepared(PlayerFixture &f)
{
    withSource(f);
    f.media.prepare();
}

void started(PlayerFixture &f)
{
    withSource(f);
    f.media.play();
}

void startedWithVideo(PlayerFixture &f)
{
    f.media.setVideoOutput(VideoOutput::PrimaryDisplay);
    f.media.setWindowId(QStringLiteral("w"));
    f.media.setClosedCaptionWindowId(QStringLiteral("c"));
    f.media.setWindowGroupId(QStringLiteral("g"));
    started(f);
}

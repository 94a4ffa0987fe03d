#include "PlayerFixture.h"

#include <QtCore/QDebug>
#include <QtCore/QMetaProperty>
#include <QtTest/QtTest>

using namespace voro::multimedia;
using voro::test::ScriptedRenderer;

namespace {

QString shown(const QMetaProperty &property, const QVariant &value)
{
    if (value.metaType().flags().testFlag(QMetaType::IsEnumeration))
        return QLatin1String(property.enumerator().valueToKey(value.toInt()));
    if (value.canConvert<QString>())
        return value.toString();
    QString text;
    QDebug(&text).nospace() << value;
    return text;
}

} // namespace

PlayerFixture::PlayerFixture(const std::function<void(ScriptedRenderer &)> &script)
    : renderer(trace,
               [&](ScriptedRenderer &scripted) {
                   qputenv("VORO_RUNTIME_DIR", folder.path().toUtf8());
                   qputenv("VORO_AUTOSPAWN", "0");
                   if (script)
                       script(scripted);
               }),
      emitted(&player, trace),
      notifier(*player.findChild<MmrContextNotifier *>())
{}

QStringList PlayerFixture::state() const
{
    QStringList lines;
    const QMetaObject &metaObject = MediaPlayer::staticMetaObject;
    for (int i = metaObject.propertyOffset(); i < metaObject.propertyCount(); ++i) {
        const QMetaProperty property = metaObject.property(i);
        lines += QLatin1String(property.name()) + QLatin1Char('=') + shown(property, property.read(&player));
    }
    return lines;
}

void PlayerFixture::forget()
{
    trace.clear();
    log.takeLines();
}

void playerRow(const char *name, const Preparation &given, const Action &act, const QString &outcome)
{
    QTest::newRow(name) << PlayerCase{given, act, outcome};
}

void tryPlayerRow()
{
    QFETCH(PlayerCase, data);
    PlayerFixture f;
    data.given(f);
    f.forget();
    const QStringList earlier = f.state();
    const MediaError::Type result = data.act(f);
    QStringList outcome = f.trace + f.log.takeLines();
    for (const QString &line : f.state()) {
        if (!earlier.contains(line))
            outcome += line;
    }
    if (result != MediaError::None)
        outcome += QStringLiteral("-> ") + QLatin1String(QMetaEnum::fromType<MediaError::Type>().valueToKey(result));
    QCOMPARE(outcome, data.outcome.split(QStringLiteral("; "), Qt::SkipEmptyParts));
}

Preparation failing(const char *function, MediaError::Type code, int64_t extraValue)
{
    return [=](PlayerFixture &f) { f.renderer.fail(QLatin1String(function), code, extraValue); };
}

void withSource(PlayerFixture &f)
{
    f.player.setSourceUrl(QUrl(QStringLiteral("file:///music/a.ogg")));
}

void prepared(PlayerFixture &f)
{
    withSource(f);
    f.player.prepare();
}

void started(PlayerFixture &f)
{
    withSource(f);
    f.player.play();
}

void startedWithVideo(PlayerFixture &f)
{
    f.player.setVideoOutput(VideoOutput::PrimaryDisplay);
    f.player.setWindowId(QStringLiteral("w"));
    f.player.setClosedCaptionWindowId(QStringLiteral("c"));
    f.player.setWindowGroupId(QStringLiteral("g"));
    started(f);
}

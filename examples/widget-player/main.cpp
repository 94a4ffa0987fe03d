// Plays a film in a widget: the renderer draws into the widget's X11 window.

#include <multimedia/MediaPlayer.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSlider>

using namespace voro::multimedia;

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    if (argc != 2) {
        qInfo("usage: widget-player FILE");
        return 2;
    }

    QWidget window;
    auto *video = new QWidget;
    video->setAttribute(Qt::WA_NativeWindow);
    video->setMinimumSize(480, 270);
    auto *button = new QPushButton("Play");
    auto *position = new QSlider(Qt::Horizontal);
    auto *layout = new QVBoxLayout(&window);
    layout->addWidget(video, 1);
    layout->addWidget(position);
    layout->addWidget(button);
    window.show();

    MediaPlayer player;
    player.setVideoOutput(VideoOutput::PrimaryDisplay);
    player.setWindowId(QString::number(video->winId()));
    player.setSourceUrl(QUrl::fromLocalFile(QString::fromLocal8Bit(argv[1])));

    const auto tell = [&window](MediaError::Type error) {
        if (error != MediaError::None) {
            QMessageBox::warning(&window, "Player",
                                 QString("This cannot be played (error %1).").arg(static_cast<int>(error)));
        }
    };
    QObject::connect(&player, qOverload<MediaError::Type, unsigned>(&MediaPlayer::error), tell);
    QObject::connect(&player, qOverload<unsigned>(&MediaPlayer::durationChanged), position, &QSlider::setMaximum);
    QObject::connect(&player, qOverload<unsigned>(&MediaPlayer::positionChanged), position, [position](unsigned ms) {
        if (!position->isSliderDown()) {
            position->setValue(static_cast<int>(ms));
        }
    });
    QObject::connect(position, &QSlider::sliderMoved, &player, [&](int ms) { tell(player.seekTime(ms)); });
    QObject::connect(&player, &MediaPlayer::mediaStateChanged, button, [button](MediaState::Type state) {
        button->setText(state == MediaState::Started ? "Pause" : "Play");
    });
    QObject::connect(button, &QPushButton::clicked, &player,
                     [&] { tell(player.mediaState() == MediaState::Started ? player.pause() : player.play()); });
    tell(player.play());
    return QApplication::exec();
}

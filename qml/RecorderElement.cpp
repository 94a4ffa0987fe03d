#include "RecorderElement.h"

namespace voro::qml {

RecorderElement::RecorderElement(QObject *parent) : AudioRecorder(parent)
{
    // The first connection, so that later listeners find the new value.
    connect(this, &AudioRecorder::recordingLevelChanged, this, [this](double level) {
        m_recordingLevel = level;
        Q_EMIT recordingLevelReported();
    });
}

void RecorderElement::changeOutputUrl(const QUrl &url)
{
    if (url == outputUrl()) {
        return;
    }
    setOutputUrl(url);
    Q_EMIT outputUrlChanged();
}

} // namespace voro::qml

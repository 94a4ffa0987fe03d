#pragma once

#include "Children.h"

#include <multimedia/AudioRecorder.h>

#include <QtQml/qqmlregistration.h>

namespace voro::qml {

/** The recorder with file and level as bindable properties. */
class RecorderElement : public voro::multimedia::AudioRecorder {
    Q_OBJECT
    Q_PROPERTY(QUrl outputUrl READ outputUrl WRITE changeOutputUrl NOTIFY outputUrlChanged)
    Q_PROPERTY(double recordingLevel READ recordingLevel NOTIFY recordingLevelReported)
    QML_NAMED_ELEMENT(AudioRecorder)
    QML_EXTENDED(voro::qml::Children)
    QML_ADDED_IN_VERSION(1, 0)
public:
    explicit RecorderElement(QObject *parent = nullptr);

    void changeOutputUrl(const QUrl &url);
    /** The last reported level of the input, from 0.0 to 1.0; 0.0 while not recording. */
    double recordingLevel() const { return m_recordingLevel; }

Q_SIGNALS:
    void outputUrlChanged();
    /** Emitted after recordingLevelChanged(): the property needs a signal of this class. */
    void recordingLevelReported();

private:
    double m_recordingLevel = 0;
};

} // namespace voro::qml

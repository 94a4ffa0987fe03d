pragma Singleton
import QtQuick

/** Numbers as people read them. */
QtObject {
    /** Milliseconds as 1:05 or 1:01:05. */
    function time(milliseconds: real): string {
        const seconds = Math.floor(Math.max(0, milliseconds) / 1000);
        const pad = number => String(number).padStart(2, "0");
        const hours = Math.floor(seconds / 3600);
        const minutes = Math.floor(seconds / 60) % 60;
        return (hours > 0 ? hours + ":" + pad(minutes) : minutes) + ":" + pad(seconds % 60);
    }

    /** A factor as 1.25. */
    function factor(number: real): string {
        return number.toLocaleString(Qt.locale(), "g", 3);
    }

    /** Bytes as 3.4 MB, which is not broken between lines. */
    function size(bytes: real): string {
        const fraction = unit => (bytes / unit).toLocaleString(Qt.locale(), "f", 1);
        let text = qsTr("%1 GB").arg(fraction(1e9));
        if (bytes < 1000)
            text = qsTr("%1 B").arg(whole(bytes));
        else if (bytes < 1e6)
            text = qsTr("%1 kB").arg(whole(bytes / 1000 + 0.5));
        else if (bytes < 1e9)
            text = qsTr("%1 MB").arg(fraction(1e6));
        return text.replace(" ", "\u00a0");
    }

    /** Seconds as 45 seconds, 45 minutes, 12 hours or 3 days. */
    function span(seconds: real): string {
        if (seconds < 2 * 60)
            return qsTr("%1 seconds").arg(whole(seconds));
        if (seconds < 2 * 3600)
            return qsTr("%1 minutes").arg(whole(seconds / 60));
        if (seconds < 2 * 86400)
            return qsTr("%1 hours").arg(whole(seconds / 3600));
        return qsTr("%1 days").arg(whole(seconds / 86400));
    }

    function whole(number: real): string {
        return Math.floor(number).toLocaleString(Qt.locale(), "f", 0);
    }
}

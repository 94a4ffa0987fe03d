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

    /** Bytes as 3.4 MB. */
    function size(bytes: real): string {
        return bytes < 1000 ? qsTr("%1 B").arg(bytes)
             : bytes < 1e6 ? qsTr("%1 kB").arg(Math.round(bytes / 1000)) : qsTr("%1 MB").arg((bytes / 1e6).toFixed(1));
    }
}

import QtQuick

/** A sheet that is made when it is opened first. */
Loader {
    id: loader

    /** The file of the sheet, and what its properties are at first. */
    required property url sheet
    property var properties: ({})

    function open() {
        if (!item)
            setSource(sheet, properties);
        (item as Sheet)?.open();
    }
}

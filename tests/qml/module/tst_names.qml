import QtQuick
import QtTest
import voro.multimedia
import voro.test

TestCase {
    id: test
    name: "names"

    /** A QML text evaluated with the module at hand; fails when it does not compile. */
    function make(text: string, version: string): QtObject {
        return Qt.createQmlObject("import QtQml; import voro.multimedia " + version + "; " + text, test);
    }

    function refuses(text: string, version: string): bool {
        try {
            make(text, version).destroy();
        } catch (error) {
            return true;
        }
        return false;
    }

    function test_class_hasAllItHasInCpp_data() {
        return Array.from(World.classes).map(name => ({ tag: name }));
    }
    function test_class_hasAllItHasInCpp(row) {
        const handlers = World.signalNames(row.tag).map(name => "on" + name[0].toUpperCase() + name.slice(1) + ": {}");
        const object = make(row.tag + " { " + handlers.join("\n") + " }", "");
        for (const name of World.properties(row.tag))
            verify(name in object && object[name] !== undefined, name);
        for (const name of World.slotNames(row.tag))
            compare(typeof object[name], "function", name);
        object.destroy();
    }

    function test_enumerator_hasItsNumber_data() {
        return Array.from(World.enumerators).map(text => ({ tag: text.split("=")[0], number: Number(text.split("=")[1]) }));
    }
    function test_enumerator_hasItsNumber(row) {
        const object = make("QtObject { property int value: " + row.tag + " }", "");
        compare(object["value"], row.number);
        object.destroy();
    }

    function test_revision_isKnownFromItsVersionOn_data() {
        return [
            { tag: "1.0: closedCaptionEnabled", version: "1.0", line: "closedCaptionEnabled: false", refused: true },
            { tag: "1.0: equalizerPreset", version: "1.0", line: "equalizerPreset: EqualizerPreset.Jazz", refused: true },
            { tag: "1.0: onEqualizerPresetChanged", version: "1.0", line: "onEqualizerPresetChanged: {}", refused: true },
            { tag: "1.0: volume", version: "1.0", line: "volume: 0.5", refused: false },
            { tag: "1.1: equalizerPreset", version: "1.1", line: "equalizerPreset: EqualizerPreset.Jazz", refused: false },
        ];
    }
    function test_revision_isKnownFromItsVersionOn(row) {
        compare(refuses("MediaPlayer { " + row.line + " }", row.version), row.refused);
    }

    function test_metaDataKey_isTheLibrarys_data() {
        return [
            { tag: "Title", key: "title" },
            { tag: "ArtworkUri", key: "artwork_uri" },
            { tag: "Latitude", key: "latitute" },
            { tag: "ISO", key: "iso" },
        ];
    }
    function test_metaDataKey_isTheLibrarys(row) {
        compare(MetaData[row.tag], row.key);
    }

    function test_error_hasAText_data() {
        return Array.from(World.enumerators).filter(text => text.startsWith("MediaError."))
            .map(text => ({ tag: text.slice(11).split("=")[0], number: Number(text.split("=")[1]) }));
    }
    function test_error_hasAText(row) {
        compare(MediaErrors.name(row.number), row.tag);
        compare(MediaErrors.text(row.number) === "", row.number === MediaError.None);
        verify(!MediaErrors.text(row.number).includes("unknown"));
    }
    function test_error_unknownNumber_isNamed() {
        compare(MediaErrors.name(77), "");
        verify(MediaErrors.text(77).includes("77"));
    }
}

<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>AboutSheet</name>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>An application on libvoromultimedia. Free software under the Apache License 2.0.</source>
        <translation>Eine Anwendung auf libvoromultimedia. Freie Software unter der Apache-Lizenz 2.0.</translation>
    </message>
</context>
<context>
    <name>AddSheet</name>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>Play next</source>
        <translation>Als Nächstes spielen</translation>
    </message>
    <message>
        <source>Play at the end of the queue</source>
        <translation>Am Ende der Warteschlange spielen</translation>
    </message>
    <message>
        <source>New playlist…</source>
        <translation>Neue Wiedergabeliste …</translation>
    </message>
    <message>
        <source>New playlist</source>
        <translation>Neue Wiedergabeliste</translation>
    </message>
    <message>
        <source>My playlist</source>
        <translation>Meine Wiedergabeliste</translation>
    </message>
</context>
<context>
    <name>AppMenu</name>
    <message>
        <source>More</source>
        <translation>Mehr</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Aussehen</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Über</translation>
    </message>
</context>
<context>
    <name>AppearanceSheet</name>
    <message>
        <source>As the system</source>
        <translation>Wie das System</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Hell</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Dunkel</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Aussehen</translation>
    </message>
    <message>
        <source>High contrast</source>
        <translation>Hoher Kontrast</translation>
    </message>
    <message>
        <source>Size of texts: %1 %</source>
        <translation>Textgröße: %1 %</translation>
    </message>
    <message>
        <source>Size of texts</source>
        <translation>Textgröße</translation>
    </message>
</context>
<context>
    <name>CaptionSheet</name>
    <message>
        <source>Captions</source>
        <translation>Untertitel</translation>
    </message>
    <message>
        <source>Show captions</source>
        <translation>Untertitel zeigen</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Captions %1</source>
        <translation>Untertitel %1</translation>
    </message>
    <message>
        <source>This film has no captions.</source>
        <translation>Dieser Film hat keine Untertitel.</translation>
    </message>
</context>
<context>
    <name>ConfirmSheet</name>
    <message>
        <source>“%1” cannot be brought back.</source>
        <translation>„%1“ lässt sich nicht zurückholen.</translation>
    </message>
    <message>
        <source>Keep</source>
        <translation>Behalten</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
</context>
<context>
    <name>Cover</name>
    <message>
        <source>Cover</source>
        <translation>Cover</translation>
    </message>
</context>
<context>
    <name>EqualizerSheet</name>
    <message>
        <source>Equalizer</source>
        <translation>Equalizer</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Aus</translation>
    </message>
    <message>
        <source>Against cabin noise</source>
        <translation>Gegen Kabinenlärm</translation>
    </message>
    <message>
        <source>More bass</source>
        <translation>Mehr Bass</translation>
    </message>
    <message>
        <source>More treble</source>
        <translation>Mehr Höhen</translation>
    </message>
    <message>
        <source>Louder voices</source>
        <translation>Lautere Stimmen</translation>
    </message>
    <message>
        <source>Less bass</source>
        <translation>Weniger Bass</translation>
    </message>
    <message>
        <source>Less treble</source>
        <translation>Weniger Höhen</translation>
    </message>
    <message>
        <source>Softer voices</source>
        <translation>Leisere Stimmen</translation>
    </message>
    <message>
        <source>Acoustic</source>
        <translation>Akustisch</translation>
    </message>
    <message>
        <source>Dance</source>
        <translation>Tanz</translation>
    </message>
    <message>
        <source>Electronic</source>
        <translation>Elektronisch</translation>
    </message>
    <message>
        <source>Hip hop</source>
        <translation>Hip-Hop</translation>
    </message>
    <message>
        <source>Jazz</source>
        <translation>Jazz</translation>
    </message>
    <message>
        <source>Lounge</source>
        <translation>Lounge</translation>
    </message>
    <message>
        <source>Piano</source>
        <translation>Klavier</translation>
    </message>
    <message>
        <source>Rhythm and blues</source>
        <translation>Rhythm and Blues</translation>
    </message>
    <message>
        <source>Rock</source>
        <translation>Rock</translation>
    </message>
    <message>
        <source>Spoken word</source>
        <translation>Gesprochenes</translation>
    </message>
</context>
<context>
    <name>ErrorWords</name>
    <message>
        <source>The player failed unexpectedly.</source>
        <translation>Der Spieler ist unerwartet ausgefallen.</translation>
    </message>
    <message>
        <source>This value cannot be used.</source>
        <translation>Dieser Wert ist nicht brauchbar.</translation>
    </message>
    <message>
        <source>This is not possible at the moment.</source>
        <translation>Das geht im Moment nicht.</translation>
    </message>
    <message>
        <source>This value is not supported here.</source>
        <translation>Dieser Wert wird hier nicht unterstützt.</translation>
    </message>
    <message>
        <source>This kind of media cannot be played.</source>
        <translation>Diese Art von Medium lässt sich nicht spielen.</translation>
    </message>
    <message>
        <source>The medium does not allow this.</source>
        <translation>Das Medium erlaubt das nicht.</translation>
    </message>
    <message>
        <source>The medium could not be read.</source>
        <translation>Das Medium war nicht lesbar.</translation>
    </message>
    <message>
        <source>The recording could not be written.</source>
        <translation>Die Aufnahme ließ sich nicht schreiben.</translation>
    </message>
    <message>
        <source>The medium was not found or does not answer.</source>
        <translation>Das Medium wurde nicht gefunden oder antwortet nicht.</translation>
    </message>
    <message>
        <source>The medium is damaged.</source>
        <translation>Das Medium ist beschädigt.</translation>
    </message>
    <message>
        <source>The output cannot be used.</source>
        <translation>Die Ausgabe ist nicht brauchbar.</translation>
    </message>
    <message>
        <source>There is not enough memory.</source>
        <translation>Der Speicher reicht nicht.</translation>
    </message>
    <message>
        <source>Something that is needed is missing or in use.</source>
        <translation>Etwas Nötiges fehlt oder ist belegt.</translation>
    </message>
    <message>
        <source>This is not permitted.</source>
        <translation>Das ist nicht erlaubt.</translation>
    </message>
    <message>
        <source>The player refused this.</source>
        <translation>Der Spieler hat das abgelehnt.</translation>
    </message>
    <message>
        <source>An unknown error happened (%1).</source>
        <translation>Ein unbekannter Fehler ist aufgetreten (%1).</translation>
    </message>
    <message>
        <source>There is no such file.</source>
        <translation>Eine solche Datei gibt es nicht.</translation>
    </message>
    <message>
        <source>This is a folder, not a medium.</source>
        <translation>Das ist ein Ordner, kein Medium.</translation>
    </message>
    <message>
        <source>You may not read this file.</source>
        <translation>Sie dürfen diese Datei nicht lesen.</translation>
    </message>
    <message>
        <source>The file is empty.</source>
        <translation>Die Datei ist leer.</translation>
    </message>
    <message>
        <source>There is no microphone, or the sound server does not answer.</source>
        <translation>Es gibt kein Mikrofon, oder der Tonserver antwortet nicht.</translation>
    </message>
    <message>
        <source>The name of a recording ends in .wav, .ogg, .opus, .flac, .mp3, .m4a or .amr.</source>
        <translation>Der Name einer Aufnahme endet mit .wav, .ogg, .opus, .flac, .mp3, .m4a oder .amr.</translation>
    </message>
    <message>
        <source>There is no such folder.</source>
        <translation>Diesen Ordner gibt es nicht.</translation>
    </message>
    <message>
        <source>You may not write in this folder.</source>
        <translation>In diesen Ordner dürfen Sie nicht schreiben.</translation>
    </message>
    <message>
        <source>The disk is full.</source>
        <translation>Der Datenträger ist voll.</translation>
    </message>
    <message>
        <source>The sound server does not answer, or what this file leads to is missing.</source>
        <translation>Der Tonserver antwortet nicht, oder es fehlt, wohin diese Datei führt.</translation>
    </message>
</context>
<context>
    <name>Files</name>
    <message>
        <source>A name is missing.</source>
        <translation>Es fehlt ein Name.</translation>
    </message>
    <message>
        <source>A name has no slash and begins with no dot.</source>
        <translation>Ein Name hat keinen Schrägstrich und beginnt nicht mit einem Punkt.</translation>
    </message>
    <message>
        <source>There is already “%1”.</source>
        <translation>„%1“ gibt es schon.</translation>
    </message>
    <message>
        <source>It cannot be renamed: %1.</source>
        <translation>Umbenennen geht nicht: %1.</translation>
    </message>
    <message>
        <source>It cannot be deleted: %1.</source>
        <translation>Löschen geht nicht: %1.</translation>
    </message>
    <message>
        <source>%1 (cut short)</source>
        <translation>%1 (abgebrochen)</translation>
    </message>
    <message>
        <source>The playlist cannot be written: %1.</source>
        <translation>Die Wiedergabeliste lässt sich nicht schreiben: %1.</translation>
    </message>
</context>
<context>
    <name>Format</name>
    <message>
        <source>%1 B</source>
        <translation>%1 B</translation>
    </message>
    <message>
        <source>%1 kB</source>
        <translation>%1 kB</translation>
    </message>
    <message>
        <source>%1 GB</source>
        <translation>%1 GB</translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation>%1 MB</translation>
    </message>
    <message>
        <source>%1 minutes</source>
        <translation>%1 Minuten</translation>
    </message>
    <message>
        <source>%1 hours</source>
        <translation>%1 Stunden</translation>
    </message>
    <message>
        <source>%1 days</source>
        <translation>%1 Tage</translation>
    </message>
    <message>
        <source>%1 seconds</source>
        <translation>%1 Sekunden</translation>
    </message>
</context>
<context>
    <name>FullScreen</name>
    <message>
        <source>Leave full screen</source>
        <translation>Vollbild verlassen</translation>
    </message>
</context>
<context>
    <name>KeySheet</name>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Show this list</source>
        <translation>Diese Liste zeigen</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
</context>
<context>
    <name>LevelMeter</name>
    <message>
        <source>Level</source>
        <translation>Pegel</translation>
    </message>
    <message>
        <source>%1 percent</source>
        <translation>%1 Prozent</translation>
    </message>
    <message>
        <source>Too loud</source>
        <translation>Zu laut</translation>
    </message>
    <message>
        <source>Nothing is heard</source>
        <translation>Nichts zu hören</translation>
    </message>
</context>
<context>
    <name>LibraryLine</name>
    <message>
        <source>Playlist</source>
        <translation>Wiedergabeliste</translation>
    </message>
    <message>
        <source>Delete “%1”</source>
        <translation>„%1“ löschen</translation>
    </message>
    <message>
        <source>Add “%1”</source>
        <translation>„%1“ hinzufügen</translation>
    </message>
</context>
<context>
    <name>LibraryPage</name>
    <message>
        <source>Folder above</source>
        <translation>Übergeordneter Ordner</translation>
    </message>
    <message>
        <source>Play all</source>
        <translation>Alles spielen</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Order</source>
        <translation>Reihenfolge</translation>
    </message>
    <message>
        <source>Title, artist or album</source>
        <translation>Titel, Interpret oder Album</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Bibliothek</translation>
    </message>
    <message>
        <source>Nothing to play in this folder</source>
        <translation>Nichts Spielbares in diesem Ordner</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <translation>Nichts gefunden</translation>
    </message>
    <message>
        <source>Names of files, titles, artists and albums are searched, in this folder and below it.</source>
        <translation>Gesucht wird nach Dateinamen, Titeln, Interpreten und Alben, in diesem Ordner und darunter.</translation>
    </message>
    <message>
        <source>By folder</source>
        <translation>Nach Ordner</translation>
    </message>
    <message>
        <source>By title</source>
        <translation>Nach Titel</translation>
    </message>
    <message>
        <source>By artist</source>
        <translation>Nach Interpret</translation>
    </message>
    <message>
        <source>By album</source>
        <translation>Nach Album</translation>
    </message>
    <message>
        <source>Delete the playlist?</source>
        <translation>Wiedergabeliste löschen?</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Voro Player</source>
        <translation>Voro Player</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>Leertaste</translation>
    </message>
    <message>
        <source>Play or pause</source>
        <translation>Spielen oder anhalten</translation>
    </message>
    <message>
        <source>10 seconds back or on</source>
        <translation>10 Sekunden zurück oder vor</translation>
    </message>
    <message>
        <source>Louder or softer, beside the library</source>
        <translation>Lauter oder leiser, neben der Bibliothek</translation>
    </message>
    <message>
        <source>Louder or softer</source>
        <translation>Lauter oder leiser</translation>
    </message>
    <message>
        <source>Sound off or on</source>
        <translation>Ton aus oder an</translation>
    </message>
    <message>
        <source>Next or previous track</source>
        <translation>Nächster oder voriger Titel</translation>
    </message>
    <message>
        <source>Slower or faster</source>
        <translation>Langsamer oder schneller</translation>
    </message>
    <message>
        <source>Queue</source>
        <translation>Warteschlange</translation>
    </message>
    <message>
        <source>Repeat</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>Mix the order</source>
        <translation>Reihenfolge mischen</translation>
    </message>
    <message>
        <source>Captions on or off</source>
        <translation>Untertitel an oder aus</translation>
    </message>
    <message>
        <source>Full screen</source>
        <translation>Vollbild</translation>
    </message>
    <message>
        <source>Go on where it stopped last time</source>
        <translation>Weiter, wo es zuletzt endete</translation>
    </message>
    <message>
        <source>Open files</source>
        <translation>Dateien öffnen</translation>
    </message>
    <message>
        <source>Open an address</source>
        <translation>Adresse öffnen</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Escape</source>
        <translation>Escape</translation>
    </message>
    <message>
        <source>Back, or to the folder above</source>
        <translation>Zurück oder zum oberen Ordner</translation>
    </message>
    <message>
        <source>Open files…</source>
        <translation>Dateien öffnen …</translation>
    </message>
    <message>
        <source>Open an address…</source>
        <translation>Adresse öffnen …</translation>
    </message>
    <message>
        <source>Sleep timer</source>
        <translation>Einschlaf-Timer</translation>
    </message>
    <message>
        <source>Sleep timer: on</source>
        <translation>Einschlaf-Timer: an</translation>
    </message>
    <message>
        <source>Record, hold or go on</source>
        <translation>Aufnehmen, anhalten oder weiter</translation>
    </message>
    <message>
        <source>Enter</source>
        <translation>Eingabe</translation>
    </message>
    <message>
        <source>Finish the recording, or play one of the list</source>
        <translation>Aufnahme beenden oder eine der Liste spielen</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Delete a recording of the list</source>
        <translation>Eine Aufnahme der Liste löschen</translation>
    </message>
    <message>
        <source>Rename a recording of the list</source>
        <translation>Eine Aufnahme umbenennen</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>Show the folder</source>
        <translation>Ordner zeigen</translation>
    </message>
    <message>
        <source>Recording %1</source>
        <translation>Aufnahme läuft: %1</translation>
    </message>
    <message>
        <source>Voro Recorder</source>
        <translation>Voro Recorder</translation>
    </message>
    <message>
        <source>Voro Remote</source>
        <translation>Voro Remote</translation>
    </message>
    <message>
        <source>Back or on</source>
        <translation>Zurück oder vor</translation>
    </message>
    <message>
        <source>The device does not answer.</source>
        <translation>Das Gerät antwortet nicht.</translation>
    </message>
    <message>
        <source>Nothing is playing</source>
        <translation>Es läuft nichts</translation>
    </message>
    <message>
        <source>What plays on this device shows up here.</source>
        <translation>Hier erscheint, was auf diesem Gerät läuft.</translation>
    </message>
    <message>
        <source>Played by %1</source>
        <translation>Gespielt von %1</translation>
    </message>
    <message>
        <source>Plays in a random order</source>
        <translation>Spielt in zufälliger Folge</translation>
    </message>
    <message>
        <source>Plays in order</source>
        <translation>Spielt der Reihe nach</translation>
    </message>
    <message>
        <source>Previous track</source>
        <translation>Voriger Titel</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Spielen</translation>
    </message>
    <message>
        <source>Next track</source>
        <translation>Nächster Titel</translation>
    </message>
    <message>
        <source>Repeats the track</source>
        <translation>Wiederholt den Titel</translation>
    </message>
    <message>
        <source>Repeats everything</source>
        <translation>Wiederholt alles</translation>
    </message>
    <message>
        <source>Repeats nothing</source>
        <translation>Wiederholt nichts</translation>
    </message>
    <message>
        <source>Softer</source>
        <translation>Leiser</translation>
    </message>
    <message>
        <source>Sound on</source>
        <translation>Ton an</translation>
    </message>
    <message>
        <source>Sound off</source>
        <translation>Ton aus</translation>
    </message>
    <message>
        <source>Louder</source>
        <translation>Lauter</translation>
    </message>
    <message>
        <source>Sources</source>
        <translation>Quellen</translation>
    </message>
    <message>
        <source>There is nothing in it that can be played.</source>
        <translation>Darin ist nichts, was sich abspielen lässt.</translation>
    </message>
</context>
<context>
    <name>MiniBar</name>
    <message>
        <source>Now playing: %1</source>
        <translation>Läuft gerade: %1</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Spielen</translation>
    </message>
</context>
<context>
    <name>NameDialog</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>Notice</name>
    <message>
        <source>Close the message</source>
        <translation>Meldung schließen</translation>
    </message>
</context>
<context>
    <name>Opening</name>
    <message>
        <source>Open files</source>
        <translation>Dateien öffnen</translation>
    </message>
    <message>
        <source>Open an address</source>
        <translation>Adresse öffnen</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Spielen</translation>
    </message>
    <message>
        <source>This is no address. One begins with http:// or https://, for example.</source>
        <translation>Das ist keine Adresse. Eine beginnt zum Beispiel mit http:// oder https://.</translation>
    </message>
</context>
<context>
    <name>Picture</name>
    <message>
        <source>Film</source>
        <translation>Film</translation>
    </message>
</context>
<context>
    <name>Playback</name>
    <message>
        <source>“%1”: %2</source>
        <translation>„%1“: %2</translation>
    </message>
    <message>
        <source>“%1” cannot be played.</source>
        <translation>„%1“ lässt sich nicht spielen.</translation>
    </message>
    <message>
        <source>The captions “%1” cannot be read.</source>
        <translation>Die Untertitel „%1“ sind nicht lesbar.</translation>
    </message>
</context>
<context>
    <name>PlayerPage</name>
    <message>
        <source>Library</source>
        <translation>Bibliothek</translation>
    </message>
    <message>
        <source>Full screen</source>
        <translation>Vollbild</translation>
    </message>
    <message>
        <source>Captions</source>
        <translation>Untertitel</translation>
    </message>
    <message>
        <source>Speed: %1×</source>
        <translation>Tempo: %1×</translation>
    </message>
    <message>
        <source>Equalizer</source>
        <translation>Equalizer</translation>
    </message>
    <message>
        <source>Nothing is played</source>
        <translation>Es wird nichts gespielt</translation>
    </message>
    <message>
        <source>Go on at %1</source>
        <translation>Bei %1 weiter</translation>
    </message>
    <message>
        <source>Sound on</source>
        <translation>Ton an</translation>
    </message>
    <message>
        <source>Sound off</source>
        <translation>Ton aus</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>Lautstärke</translation>
    </message>
</context>
<context>
    <name>Progress</name>
    <message>
        <source>Position</source>
        <translation>Position</translation>
    </message>
</context>
<context>
    <name>QueueSheet</name>
    <message>
        <source>Queue</source>
        <translation>Warteschlange</translation>
    </message>
    <message>
        <source>Track %1</source>
        <translation>Titel %1</translation>
    </message>
    <message>
        <source>Take “%1” out</source>
        <translation>„%1“ herausnehmen</translation>
    </message>
    <message>
        <source>Move “%1”</source>
        <translation>„%1“ verschieben</translation>
    </message>
</context>
<context>
    <name>RecordPanel</name>
    <message>
        <source>Ogg Opus: small</source>
        <translation>Ogg Opus: klein</translation>
    </message>
    <message>
        <source>Ogg Vorbis: small</source>
        <translation>Ogg Vorbis: klein</translation>
    </message>
    <message>
        <source>MP3: plays anywhere</source>
        <translation>MP3: läuft überall</translation>
    </message>
    <message>
        <source>AAC: small, plays on phones</source>
        <translation>AAC: klein, läuft auf Telefonen</translation>
    </message>
    <message>
        <source>AMR: speech only, tiny</source>
        <translation>AMR: nur Sprache, winzig</translation>
    </message>
    <message>
        <source>FLAC: without loss</source>
        <translation>FLAC: ohne Verlust</translation>
    </message>
    <message>
        <source>WAV: as it is</source>
        <translation>WAV: unverändert</translation>
    </message>
    <message>
        <source>As the microphone has them</source>
        <translation>Wie das Mikrofon</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>Auto</translation>
    </message>
    <message>
        <source>Mono</source>
        <translation>Mono</translation>
    </message>
    <message>
        <source>Stereo</source>
        <translation>Stereo</translation>
    </message>
    <message>
        <source>The recording has ended: %1 What was recorded is in the list.</source>
        <translation>Die Aufnahme ist zu Ende: %1 Was aufgenommen wurde, steht in der Liste.</translation>
    </message>
    <message>
        <source>Recorded: %1</source>
        <translation>Aufgenommen: %1</translation>
    </message>
    <message>
        <source>%1 free, enough for %2</source>
        <translation>%1 frei, genug für %2</translation>
    </message>
    <message>
        <source>Format: %1</source>
        <translation>Format: %1</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>Aufnehmen</translation>
    </message>
    <message>
        <source>Channels: %1</source>
        <translation>Kanäle: %1</translation>
    </message>
    <message>
        <source>Finish</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>Channels</source>
        <translation>Kanäle</translation>
    </message>
</context>
<context>
    <name>RecordingLine</name>
    <message>
        <source>Rename “%1”</source>
        <translation>„%1“ umbenennen</translation>
    </message>
    <message>
        <source>Delete “%1”</source>
        <translation>„%1“ löschen</translation>
    </message>
</context>
<context>
    <name>RecordingList</name>
    <message>
        <source>There is no program that shows folders. The recordings are in %1.</source>
        <translation>Kein Programm zeigt Ordner. Die Aufnahmen liegen in %1.</translation>
    </message>
    <message>
        <source>Recordings</source>
        <translation>Aufnahmen</translation>
    </message>
    <message>
        <source>Show the folder</source>
        <translation>Ordner zeigen</translation>
    </message>
    <message>
        <source>No recordings yet</source>
        <translation>Noch keine Aufnahmen</translation>
    </message>
    <message>
        <source>The red button starts the first one.</source>
        <translation>Der rote Knopf beginnt die erste.</translation>
    </message>
    <message>
        <source>Rename the recording</source>
        <translation>Aufnahme umbenennen</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message>
        <source>Delete the recording?</source>
        <translation>Aufnahme löschen?</translation>
    </message>
</context>
<context>
    <name>Role</name>
    <message>
        <source>Voro Player</source>
        <translation>Voro Player</translation>
    </message>
</context>
<context>
    <name>Sheet</name>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>SleepSheet</name>
    <message>
        <source>Sleep timer</source>
        <translation>Einschlaf-Timer</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Aus</translation>
    </message>
    <message>
        <source>At the end of the track</source>
        <translation>Am Ende des Titels</translation>
    </message>
    <message>
        <source>In %1 minutes</source>
        <translation>In %1 Minuten</translation>
    </message>
</context>
<context>
    <name>SourceSheet</name>
    <message>
        <source>Sources</source>
        <translation>Quellen</translation>
    </message>
    <message>
        <source>Show “%1”</source>
        <translation>„%1“ zeigen</translation>
    </message>
</context>
<context>
    <name>SpeedSheet</name>
    <message>
        <source>Speed</source>
        <translation>Tempo</translation>
    </message>
</context>
<context>
    <name>StartPage</name>
    <message>
        <source>Go on with “%1”</source>
        <translation>Weiter mit „%1“</translation>
    </message>
    <message>
        <source>Open files…</source>
        <translation>Dateien öffnen …</translation>
    </message>
    <message>
        <source>Open an address…</source>
        <translation>Adresse öffnen …</translation>
    </message>
    <message>
        <source>Play the sample</source>
        <translation>Beispiel spielen</translation>
    </message>
</context>
<context>
    <name>Transport</name>
    <message>
        <source>Position</source>
        <translation>Position</translation>
    </message>
    <message>
        <source>Repeats the track</source>
        <translation>Wiederholt den Titel</translation>
    </message>
    <message>
        <source>Repeats everything</source>
        <translation>Wiederholt alles</translation>
    </message>
    <message>
        <source>Repeats nothing</source>
        <translation>Wiederholt nichts</translation>
    </message>
    <message>
        <source>Plays in a mixed order</source>
        <translation>Spielt gemischt</translation>
    </message>
    <message>
        <source>Plays in order</source>
        <translation>Spielt der Reihe nach</translation>
    </message>
    <message>
        <source>Previous track</source>
        <translation>Voriger Titel</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Spielen</translation>
    </message>
    <message>
        <source>Next track</source>
        <translation>Nächster Titel</translation>
    </message>
    <message>
        <source>Queue</source>
        <translation>Warteschlange</translation>
    </message>
</context>
</TS>

<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="it">
<context>
    <name>AboutSheet</name>
    <message>
        <source>Version %1</source>
        <translation>Versione %1</translation>
    </message>
    <message>
        <source>An application on libvoromultimedia. Free software under the Apache License 2.0.</source>
        <translation>Un’applicazione basata su libvoromultimedia. Software libero con licenza Apache 2.0.</translation>
    </message>
</context>
<context>
    <name>AddSheet</name>
    <message>
        <source>Add</source>
        <translation>Aggiungi</translation>
    </message>
    <message>
        <source>Play next</source>
        <translation>Riproduci dopo</translation>
    </message>
    <message>
        <source>Play at the end of the queue</source>
        <translation>Riproduci alla fine della coda</translation>
    </message>
    <message>
        <source>New playlist…</source>
        <translation>Nuova playlist…</translation>
    </message>
    <message>
        <source>New playlist</source>
        <translation>Nuova playlist</translation>
    </message>
    <message>
        <source>My playlist</source>
        <translation>La mia playlist</translation>
    </message>
</context>
<context>
    <name>AppMenu</name>
    <message>
        <source>More</source>
        <translation>Altro</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Aspetto</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasti</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Informazioni</translation>
    </message>
</context>
<context>
    <name>AppearanceSheet</name>
    <message>
        <source>As the system</source>
        <translation>Come il sistema</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Chiaro</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Scuro</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Aspetto</translation>
    </message>
    <message>
        <source>High contrast</source>
        <translation>Contrasto elevato</translation>
    </message>
    <message>
        <source>Size of texts: %1 %</source>
        <translation>Dimensione testo: %1 %</translation>
    </message>
    <message>
        <source>Size of texts</source>
        <translation>Dimensione testo</translation>
    </message>
</context>
<context>
    <name>CaptionSheet</name>
    <message>
        <source>Captions</source>
        <translation>Sottotitoli</translation>
    </message>
    <message>
        <source>Show captions</source>
        <translation>Mostra sottotitoli</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Captions %1</source>
        <translation>Sottotitoli %1</translation>
    </message>
    <message>
        <source>This film has no captions.</source>
        <translation>Questo film non ha sottotitoli.</translation>
    </message>
</context>
<context>
    <name>ConfirmSheet</name>
    <message>
        <source>“%1” cannot be brought back.</source>
        <translation>“%1” non potrà essere recuperato.</translation>
    </message>
    <message>
        <source>Keep</source>
        <translation>Mantieni</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Elimina</translation>
    </message>
</context>
<context>
    <name>Cover</name>
    <message>
        <source>Cover</source>
        <translation>Copertina</translation>
    </message>
</context>
<context>
    <name>EqualizerSheet</name>
    <message>
        <source>Equalizer</source>
        <translation>Equalizzatore</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Disattivato</translation>
    </message>
    <message>
        <source>Against cabin noise</source>
        <translation>Contro il rumore di cabina</translation>
    </message>
    <message>
        <source>More bass</source>
        <translation>Più bassi</translation>
    </message>
    <message>
        <source>More treble</source>
        <translation>Più alti</translation>
    </message>
    <message>
        <source>Louder voices</source>
        <translation>Voci più forti</translation>
    </message>
    <message>
        <source>Less bass</source>
        <translation>Meno bassi</translation>
    </message>
    <message>
        <source>Less treble</source>
        <translation>Meno alti</translation>
    </message>
    <message>
        <source>Softer voices</source>
        <translation>Voci più deboli</translation>
    </message>
    <message>
        <source>Acoustic</source>
        <translation>Acustica</translation>
    </message>
    <message>
        <source>Dance</source>
        <translation>Dance</translation>
    </message>
    <message>
        <source>Electronic</source>
        <translation>Elettronica</translation>
    </message>
    <message>
        <source>Hip hop</source>
        <translation>Hip hop</translation>
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
        <translation>Pianoforte</translation>
    </message>
    <message>
        <source>Rhythm and blues</source>
        <translation>Rhythm and blues</translation>
    </message>
    <message>
        <source>Rock</source>
        <translation>Rock</translation>
    </message>
    <message>
        <source>Spoken word</source>
        <translation>Parlato</translation>
    </message>
</context>
<context>
    <name>ErrorWords</name>
    <message>
        <source>The player failed unexpectedly.</source>
        <translation>Il lettore si è fermato in modo imprevisto.</translation>
    </message>
    <message>
        <source>This value cannot be used.</source>
        <translation>Questo valore non è utilizzabile.</translation>
    </message>
    <message>
        <source>This is not possible at the moment.</source>
        <translation>Al momento non è possibile.</translation>
    </message>
    <message>
        <source>This value is not supported here.</source>
        <translation>Questo valore qui non è supportato.</translation>
    </message>
    <message>
        <source>This kind of media cannot be played.</source>
        <translation>Questo tipo di file non può essere riprodotto.</translation>
    </message>
    <message>
        <source>The medium does not allow this.</source>
        <translation>Il file non lo permette.</translation>
    </message>
    <message>
        <source>The medium could not be read.</source>
        <translation>Impossibile leggere il file.</translation>
    </message>
    <message>
        <source>The recording could not be written.</source>
        <translation>Impossibile scrivere la registrazione.</translation>
    </message>
    <message>
        <source>The medium was not found or does not answer.</source>
        <translation>Il file non è stato trovato o non risponde.</translation>
    </message>
    <message>
        <source>The medium is damaged.</source>
        <translation>Il file è danneggiato.</translation>
    </message>
    <message>
        <source>The output cannot be used.</source>
        <translation>L’uscita non è utilizzabile.</translation>
    </message>
    <message>
        <source>There is not enough memory.</source>
        <translation>La memoria non basta.</translation>
    </message>
    <message>
        <source>Something that is needed is missing or in use.</source>
        <translation>Qualcosa di necessario manca o è in uso.</translation>
    </message>
    <message>
        <source>This is not permitted.</source>
        <translation>Non è consentito.</translation>
    </message>
    <message>
        <source>The player refused this.</source>
        <translation>Il lettore ha rifiutato.</translation>
    </message>
    <message>
        <source>An unknown error happened (%1).</source>
        <translation>Si è verificato un errore sconosciuto (%1).</translation>
    </message>
    <message>
        <source>There is no such file.</source>
        <translation>Questo file non esiste.</translation>
    </message>
    <message>
        <source>This is a folder, not a medium.</source>
        <translation>Questa è una cartella, non un contenuto.</translation>
    </message>
    <message>
        <source>You may not read this file.</source>
        <translation>Non si ha il permesso di leggere questo file.</translation>
    </message>
    <message>
        <source>The file is empty.</source>
        <translation>Il file è vuoto.</translation>
    </message>
    <message>
        <source>There is no microphone, or the sound server does not answer.</source>
        <translation>Non c’è un microfono oppure il server audio non risponde.</translation>
    </message>
    <message>
        <source>The name of a recording ends in .wav, .ogg, .opus, .flac, .mp3, .m4a or .amr.</source>
        <translation>Il nome di una registrazione termina con .wav, .ogg, .opus, .flac, .mp3, .m4a o .amr.</translation>
    </message>
    <message>
        <source>There is no such folder.</source>
        <translation>Questa cartella non esiste.</translation>
    </message>
    <message>
        <source>You may not write in this folder.</source>
        <translation>Non è permesso scrivere in questa cartella.</translation>
    </message>
    <message>
        <source>The disk is full.</source>
        <translation>Il disco è pieno.</translation>
    </message>
    <message>
        <source>The sound server does not answer, or what this file leads to is missing.</source>
        <translation>Il server audio non risponde oppure manca ciò a cui porta questo file.</translation>
    </message>
</context>
<context>
    <name>Files</name>
    <message>
        <source>A name is missing.</source>
        <translation>Manca un nome.</translation>
    </message>
    <message>
        <source>A name has no slash and begins with no dot.</source>
        <translation>Un nome non contiene barre e non inizia con un punto.</translation>
    </message>
    <message>
        <source>There is already “%1”.</source>
        <translation>“%1” esiste già.</translation>
    </message>
    <message>
        <source>It cannot be renamed: %1.</source>
        <translation>Impossibile rinominare: %1.</translation>
    </message>
    <message>
        <source>It cannot be deleted: %1.</source>
        <translation>Impossibile eliminare: %1.</translation>
    </message>
    <message>
        <source>%1 (cut short)</source>
        <translation>%1 (interrotta)</translation>
    </message>
    <message>
        <source>The playlist cannot be written: %1.</source>
        <translation>Impossibile scrivere la playlist: %1.</translation>
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
        <translation>%1 minuti</translation>
    </message>
    <message>
        <source>%1 hours</source>
        <translation>%1 ore</translation>
    </message>
    <message>
        <source>%1 days</source>
        <translation>%1 giorni</translation>
    </message>
    <message>
        <source>%1 seconds</source>
        <translation>%1 secondi</translation>
    </message>
</context>
<context>
    <name>FullScreen</name>
    <message>
        <source>Leave full screen</source>
        <translation>Esci da schermo intero</translation>
    </message>
</context>
<context>
    <name>KeySheet</name>
    <message>
        <source>Quit</source>
        <translation>Esci</translation>
    </message>
    <message>
        <source>Show this list</source>
        <translation>Mostra questo elenco</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasti</translation>
    </message>
</context>
<context>
    <name>LevelMeter</name>
    <message>
        <source>Level</source>
        <translation>Livello</translation>
    </message>
    <message>
        <source>%1 percent</source>
        <translation>%1 per cento</translation>
    </message>
    <message>
        <source>Too loud</source>
        <translation>Troppo forte</translation>
    </message>
    <message>
        <source>Nothing is heard</source>
        <translation>Non si sente nulla</translation>
    </message>
</context>
<context>
    <name>LibraryLine</name>
    <message>
        <source>Playlist</source>
        <translation>Playlist</translation>
    </message>
    <message>
        <source>Delete “%1”</source>
        <translation>Elimina “%1”</translation>
    </message>
    <message>
        <source>Add “%1”</source>
        <translation>Aggiungi “%1”</translation>
    </message>
</context>
<context>
    <name>LibraryPage</name>
    <message>
        <source>Folder above</source>
        <translation>Cartella superiore</translation>
    </message>
    <message>
        <source>Play all</source>
        <translation>Riproduci tutto</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Cerca</translation>
    </message>
    <message>
        <source>Order</source>
        <translation>Ordine</translation>
    </message>
    <message>
        <source>Title, artist or album</source>
        <translation>Titolo, artista o album</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Libreria</translation>
    </message>
    <message>
        <source>Nothing to play in this folder</source>
        <translation>Niente da riprodurre in questa cartella</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <translation>Nessun risultato</translation>
    </message>
    <message>
        <source>Names of files, titles, artists and albums are searched, in this folder and below it.</source>
        <translation>Si cercano nomi di file, titoli, artisti e album, in questa cartella e in quelle sottostanti.</translation>
    </message>
    <message>
        <source>By folder</source>
        <translation>Per cartella</translation>
    </message>
    <message>
        <source>By title</source>
        <translation>Per titolo</translation>
    </message>
    <message>
        <source>By artist</source>
        <translation>Per artista</translation>
    </message>
    <message>
        <source>By album</source>
        <translation>Per album</translation>
    </message>
    <message>
        <source>Delete the playlist?</source>
        <translation>Eliminare la playlist?</translation>
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
        <translation>Spazio</translation>
    </message>
    <message>
        <source>Play or pause</source>
        <translation>Riproduci o metti in pausa</translation>
    </message>
    <message>
        <source>10 seconds back or on</source>
        <translation>10 secondi indietro o avanti</translation>
    </message>
    <message>
        <source>Louder or softer, beside the library</source>
        <translation>Volume su o giù, fuori dalla libreria</translation>
    </message>
    <message>
        <source>Louder or softer</source>
        <translation>Volume su o giù</translation>
    </message>
    <message>
        <source>Sound off or on</source>
        <translation>Audio sì o no</translation>
    </message>
    <message>
        <source>Next or previous track</source>
        <translation>Brano successivo o precedente</translation>
    </message>
    <message>
        <source>Slower or faster</source>
        <translation>Più lento o più veloce</translation>
    </message>
    <message>
        <source>Queue</source>
        <translation>Coda</translation>
    </message>
    <message>
        <source>Repeat</source>
        <translation>Ripeti</translation>
    </message>
    <message>
        <source>Mix the order</source>
        <translation>Mescola l’ordine</translation>
    </message>
    <message>
        <source>Captions on or off</source>
        <translation>Sottotitoli sì o no</translation>
    </message>
    <message>
        <source>Full screen</source>
        <translation>Schermo intero</translation>
    </message>
    <message>
        <source>Go on where it stopped last time</source>
        <translation>Riprendi da dove si era interrotto</translation>
    </message>
    <message>
        <source>Open files</source>
        <translation>Apri file</translation>
    </message>
    <message>
        <source>Open an address</source>
        <translation>Apri un indirizzo</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Cerca</translation>
    </message>
    <message>
        <source>Escape</source>
        <translation>Esc</translation>
    </message>
    <message>
        <source>Back, or to the folder above</source>
        <translation>Indietro, o alla cartella superiore</translation>
    </message>
    <message>
        <source>Open files…</source>
        <translation>Apri file…</translation>
    </message>
    <message>
        <source>Open an address…</source>
        <translation>Apri un indirizzo…</translation>
    </message>
    <message>
        <source>Sleep timer</source>
        <translation>Timer di spegnimento</translation>
    </message>
    <message>
        <source>Sleep timer: on</source>
        <translation>Timer: attivo</translation>
    </message>
    <message>
        <source>Record, hold or go on</source>
        <translation>Registra, sospendi o riprendi</translation>
    </message>
    <message>
        <source>Enter</source>
        <translation>Invio</translation>
    </message>
    <message>
        <source>Finish the recording, or play one of the list</source>
        <translation>Termina la registrazione, o riproducine una dell’elenco</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Elimina</translation>
    </message>
    <message>
        <source>Delete a recording of the list</source>
        <translation>Elimina una registrazione</translation>
    </message>
    <message>
        <source>Rename a recording of the list</source>
        <translation>Rinomina una registrazione</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Formato</translation>
    </message>
    <message>
        <source>Show the folder</source>
        <translation>Mostra la cartella</translation>
    </message>
    <message>
        <source>Recording %1</source>
        <translation>Registrazione %1</translation>
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
        <translation>Indietro o avanti</translation>
    </message>
    <message>
        <source>The device does not answer.</source>
        <translation>Il dispositivo non risponde.</translation>
    </message>
    <message>
        <source>Nothing is playing</source>
        <translation>Niente in riproduzione</translation>
    </message>
    <message>
        <source>What plays on this device shows up here.</source>
        <translation>Qui compare ciò che suona su questo dispositivo.</translation>
    </message>
    <message>
        <source>Played by %1</source>
        <translation>Riprodotto da %1</translation>
    </message>
    <message>
        <source>Plays in a random order</source>
        <translation>Ordine casuale</translation>
    </message>
    <message>
        <source>Plays in order</source>
        <translation>In ordine</translation>
    </message>
    <message>
        <source>Previous track</source>
        <translation>Brano precedente</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pausa</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Riproduci</translation>
    </message>
    <message>
        <source>Next track</source>
        <translation>Brano successivo</translation>
    </message>
    <message>
        <source>Repeats the track</source>
        <translation>Ripete il brano</translation>
    </message>
    <message>
        <source>Repeats everything</source>
        <translation>Ripete tutto</translation>
    </message>
    <message>
        <source>Repeats nothing</source>
        <translation>Non ripete nulla</translation>
    </message>
    <message>
        <source>Softer</source>
        <translation>Volume giù</translation>
    </message>
    <message>
        <source>Sound on</source>
        <translation>Attiva audio</translation>
    </message>
    <message>
        <source>Sound off</source>
        <translation>Disattiva audio</translation>
    </message>
    <message>
        <source>Louder</source>
        <translation>Volume su</translation>
    </message>
    <message>
        <source>Sources</source>
        <translation>Sorgenti</translation>
    </message>
    <message>
        <source>There is nothing in it that can be played.</source>
        <translation>Non contiene nulla che si possa riprodurre.</translation>
    </message>
</context>
<context>
    <name>MiniBar</name>
    <message>
        <source>Now playing: %1</source>
        <translation>In riproduzione: %1</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pausa</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Riproduci</translation>
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
        <translation>Chiudi il messaggio</translation>
    </message>
</context>
<context>
    <name>Opening</name>
    <message>
        <source>Open files</source>
        <translation>Apri file</translation>
    </message>
    <message>
        <source>Open an address</source>
        <translation>Apri un indirizzo</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Riproduci</translation>
    </message>
    <message>
        <source>This is no address. One begins with http:// or https://, for example.</source>
        <translation>Questo non è un indirizzo. Un indirizzo inizia ad esempio con http:// o https://.</translation>
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
        <translation>“%1”: %2</translation>
    </message>
    <message>
        <source>“%1” cannot be played.</source>
        <translation>Impossibile riprodurre “%1”.</translation>
    </message>
    <message>
        <source>The captions “%1” cannot be read.</source>
        <translation>I sottotitoli “%1” non sono leggibili.</translation>
    </message>
</context>
<context>
    <name>PlayerPage</name>
    <message>
        <source>Library</source>
        <translation>Libreria</translation>
    </message>
    <message>
        <source>Full screen</source>
        <translation>Schermo intero</translation>
    </message>
    <message>
        <source>Captions</source>
        <translation>Sottotitoli</translation>
    </message>
    <message>
        <source>Speed: %1×</source>
        <translation>Velocità: %1×</translation>
    </message>
    <message>
        <source>Equalizer</source>
        <translation>Equalizzatore</translation>
    </message>
    <message>
        <source>Nothing is played</source>
        <translation>Nessuna riproduzione</translation>
    </message>
    <message>
        <source>Go on at %1</source>
        <translation>Riprendi da %1</translation>
    </message>
    <message>
        <source>Sound on</source>
        <translation>Attiva audio</translation>
    </message>
    <message>
        <source>Sound off</source>
        <translation>Disattiva audio</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>Volume</translation>
    </message>
</context>
<context>
    <name>Progress</name>
    <message>
        <source>Position</source>
        <translation>Posizione</translation>
    </message>
</context>
<context>
    <name>QueueSheet</name>
    <message>
        <source>Queue</source>
        <translation>Coda</translation>
    </message>
    <message>
        <source>Track %1</source>
        <translation>Brano %1</translation>
    </message>
    <message>
        <source>Take “%1” out</source>
        <translation>Togli “%1”</translation>
    </message>
    <message>
        <source>Move “%1”</source>
        <translation>Sposta “%1”</translation>
    </message>
</context>
<context>
    <name>RecordPanel</name>
    <message>
        <source>Ogg Opus: small</source>
        <translation>Ogg Opus: piccolo</translation>
    </message>
    <message>
        <source>Ogg Vorbis: small</source>
        <translation>Ogg Vorbis: piccolo</translation>
    </message>
    <message>
        <source>MP3: plays anywhere</source>
        <translation>MP3: funziona ovunque</translation>
    </message>
    <message>
        <source>AAC: small, plays on phones</source>
        <translation>AAC: piccolo, per telefoni</translation>
    </message>
    <message>
        <source>AMR: speech only, tiny</source>
        <translation>AMR: solo voce, minuscolo</translation>
    </message>
    <message>
        <source>FLAC: without loss</source>
        <translation>FLAC: senza perdita</translation>
    </message>
    <message>
        <source>WAV: as it is</source>
        <translation>WAV: così com’è</translation>
    </message>
    <message>
        <source>As the microphone has them</source>
        <translation>Come il microfono</translation>
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
        <translation>La registrazione è terminata: %1 Quanto registrato è nell’elenco.</translation>
    </message>
    <message>
        <source>Recorded: %1</source>
        <translation>Registrato: %1</translation>
    </message>
    <message>
        <source>%1 free, enough for %2</source>
        <translation>%1 liberi, bastano per %2</translation>
    </message>
    <message>
        <source>Format: %1</source>
        <translation>Formato: %1</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Sospendi</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Riprendi</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>Registra</translation>
    </message>
    <message>
        <source>Channels: %1</source>
        <translation>Canali: %1</translation>
    </message>
    <message>
        <source>Finish</source>
        <translation>Termina</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Formato</translation>
    </message>
    <message>
        <source>Channels</source>
        <translation>Canali</translation>
    </message>
</context>
<context>
    <name>RecordingLine</name>
    <message>
        <source>Rename “%1”</source>
        <translation>Rinomina “%1”</translation>
    </message>
    <message>
        <source>Delete “%1”</source>
        <translation>Elimina “%1”</translation>
    </message>
</context>
<context>
    <name>RecordingList</name>
    <message>
        <source>There is no program that shows folders. The recordings are in %1.</source>
        <translation>Nessun programma mostra le cartelle. Le registrazioni sono in %1.</translation>
    </message>
    <message>
        <source>Recordings</source>
        <translation>Registrazioni</translation>
    </message>
    <message>
        <source>Show the folder</source>
        <translation>Mostra la cartella</translation>
    </message>
    <message>
        <source>No recordings yet</source>
        <translation>Ancora nessuna registrazione</translation>
    </message>
    <message>
        <source>The red button starts the first one.</source>
        <translation>Il pulsante rosso avvia la prima.</translation>
    </message>
    <message>
        <source>Rename the recording</source>
        <translation>Rinomina la registrazione</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Rinomina</translation>
    </message>
    <message>
        <source>Delete the recording?</source>
        <translation>Eliminare la registrazione?</translation>
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
        <translation>Chiudi</translation>
    </message>
</context>
<context>
    <name>SleepSheet</name>
    <message>
        <source>Sleep timer</source>
        <translation>Timer di spegnimento</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Disattivato</translation>
    </message>
    <message>
        <source>At the end of the track</source>
        <translation>Alla fine del brano</translation>
    </message>
    <message>
        <source>In %1 minutes</source>
        <translation>Tra %1 minuti</translation>
    </message>
</context>
<context>
    <name>SourceSheet</name>
    <message>
        <source>Sources</source>
        <translation>Sorgenti</translation>
    </message>
    <message>
        <source>Show “%1”</source>
        <translation>Mostra “%1”</translation>
    </message>
</context>
<context>
    <name>SpeedSheet</name>
    <message>
        <source>Speed</source>
        <translation>Velocità</translation>
    </message>
</context>
<context>
    <name>StartPage</name>
    <message>
        <source>Go on with “%1”</source>
        <translation>Riprendi “%1”</translation>
    </message>
    <message>
        <source>Open files…</source>
        <translation>Apri file…</translation>
    </message>
    <message>
        <source>Open an address…</source>
        <translation>Apri un indirizzo…</translation>
    </message>
    <message>
        <source>Play the sample</source>
        <translation>Riproduci l’esempio</translation>
    </message>
</context>
<context>
    <name>Transport</name>
    <message>
        <source>Position</source>
        <translation>Posizione</translation>
    </message>
    <message>
        <source>Repeats the track</source>
        <translation>Ripete il brano</translation>
    </message>
    <message>
        <source>Repeats everything</source>
        <translation>Ripete tutto</translation>
    </message>
    <message>
        <source>Repeats nothing</source>
        <translation>Non ripete nulla</translation>
    </message>
    <message>
        <source>Plays in a mixed order</source>
        <translation>Ordine mescolato</translation>
    </message>
    <message>
        <source>Plays in order</source>
        <translation>In ordine</translation>
    </message>
    <message>
        <source>Previous track</source>
        <translation>Brano precedente</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pausa</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Riproduci</translation>
    </message>
    <message>
        <source>Next track</source>
        <translation>Brano successivo</translation>
    </message>
    <message>
        <source>Queue</source>
        <translation>Coda</translation>
    </message>
</context>
</TS>

<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="pl">
<context>
    <name>AboutSheet</name>
    <message>
        <source>Version %1</source>
        <translation>Wersja %1</translation>
    </message>
    <message>
        <source>An application on libvoromultimedia. Free software under the Apache License 2.0.</source>
        <translation>Program oparty na libvoromultimedia. Wolne oprogramowanie na licencji Apache 2.0.</translation>
    </message>
</context>
<context>
    <name>AddSheet</name>
    <message>
        <source>Add</source>
        <translation>Dodaj</translation>
    </message>
    <message>
        <source>Play next</source>
        <translation>Odtwórz jako następne</translation>
    </message>
    <message>
        <source>Play at the end of the queue</source>
        <translation>Odtwórz na końcu kolejki</translation>
    </message>
    <message>
        <source>New playlist…</source>
        <translation>Nowa lista…</translation>
    </message>
    <message>
        <source>New playlist</source>
        <translation>Nowa lista odtwarzania</translation>
    </message>
    <message>
        <source>My playlist</source>
        <translation>Moja lista</translation>
    </message>
</context>
<context>
    <name>AppMenu</name>
    <message>
        <source>More</source>
        <translation>Więcej</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Wygląd</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Klawisze</translation>
    </message>
    <message>
        <source>About</source>
        <translation>O programie</translation>
    </message>
</context>
<context>
    <name>AppearanceSheet</name>
    <message>
        <source>As the system</source>
        <translation>Jak w systemie</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Jasny</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Ciemny</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Wygląd</translation>
    </message>
    <message>
        <source>High contrast</source>
        <translation>Wysoki kontrast</translation>
    </message>
    <message>
        <source>Size of texts: %1 %</source>
        <translation>Rozmiar tekstu: %1 %</translation>
    </message>
    <message>
        <source>Size of texts</source>
        <translation>Rozmiar tekstu</translation>
    </message>
</context>
<context>
    <name>CaptionSheet</name>
    <message>
        <source>Captions</source>
        <translation>Napisy</translation>
    </message>
    <message>
        <source>Show captions</source>
        <translation>Pokaż napisy</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Captions %1</source>
        <translation>Napisy %1</translation>
    </message>
    <message>
        <source>This film has no captions.</source>
        <translation>Ten film nie ma napisów.</translation>
    </message>
</context>
<context>
    <name>ConfirmSheet</name>
    <message>
        <source>“%1” cannot be brought back.</source>
        <translation>Nie można będzie odzyskać „%1”.</translation>
    </message>
    <message>
        <source>Keep</source>
        <translation>Zachowaj</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Usuń</translation>
    </message>
</context>
<context>
    <name>Cover</name>
    <message>
        <source>Cover</source>
        <translation>Okładka</translation>
    </message>
</context>
<context>
    <name>EqualizerSheet</name>
    <message>
        <source>Equalizer</source>
        <translation>Korektor</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Wyłączony</translation>
    </message>
    <message>
        <source>Against cabin noise</source>
        <translation>Przeciw hałasowi kabiny</translation>
    </message>
    <message>
        <source>More bass</source>
        <translation>Więcej basów</translation>
    </message>
    <message>
        <source>More treble</source>
        <translation>Więcej sopranów</translation>
    </message>
    <message>
        <source>Louder voices</source>
        <translation>Głośniejsze głosy</translation>
    </message>
    <message>
        <source>Less bass</source>
        <translation>Mniej basów</translation>
    </message>
    <message>
        <source>Less treble</source>
        <translation>Mniej sopranów</translation>
    </message>
    <message>
        <source>Softer voices</source>
        <translation>Cichsze głosy</translation>
    </message>
    <message>
        <source>Acoustic</source>
        <translation>Akustyczna</translation>
    </message>
    <message>
        <source>Dance</source>
        <translation>Taneczna</translation>
    </message>
    <message>
        <source>Electronic</source>
        <translation>Elektroniczna</translation>
    </message>
    <message>
        <source>Hip hop</source>
        <translation>Hip-hop</translation>
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
        <translation>Fortepian</translation>
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
        <translation>Mowa</translation>
    </message>
</context>
<context>
    <name>ErrorWords</name>
    <message>
        <source>The player failed unexpectedly.</source>
        <translation>Odtwarzacz nieoczekiwanie zawiódł.</translation>
    </message>
    <message>
        <source>This value cannot be used.</source>
        <translation>Tej wartości nie można użyć.</translation>
    </message>
    <message>
        <source>This is not possible at the moment.</source>
        <translation>W tej chwili to niemożliwe.</translation>
    </message>
    <message>
        <source>This value is not supported here.</source>
        <translation>Ta wartość nie jest tu obsługiwana.</translation>
    </message>
    <message>
        <source>This kind of media cannot be played.</source>
        <translation>Tego rodzaju pliku nie można odtworzyć.</translation>
    </message>
    <message>
        <source>The medium does not allow this.</source>
        <translation>Plik na to nie pozwala.</translation>
    </message>
    <message>
        <source>The medium could not be read.</source>
        <translation>Nie można odczytać pliku.</translation>
    </message>
    <message>
        <source>The recording could not be written.</source>
        <translation>Nie można zapisać nagrania.</translation>
    </message>
    <message>
        <source>The medium was not found or does not answer.</source>
        <translation>Nie znaleziono pliku lub brak odpowiedzi.</translation>
    </message>
    <message>
        <source>The medium is damaged.</source>
        <translation>Plik jest uszkodzony.</translation>
    </message>
    <message>
        <source>The output cannot be used.</source>
        <translation>Nie można użyć wyjścia.</translation>
    </message>
    <message>
        <source>There is not enough memory.</source>
        <translation>Brakuje pamięci.</translation>
    </message>
    <message>
        <source>Something that is needed is missing or in use.</source>
        <translation>Brakuje czegoś potrzebnego lub jest zajęte.</translation>
    </message>
    <message>
        <source>This is not permitted.</source>
        <translation>To jest niedozwolone.</translation>
    </message>
    <message>
        <source>The player refused this.</source>
        <translation>Odtwarzacz odmówił.</translation>
    </message>
    <message>
        <source>An unknown error happened (%1).</source>
        <translation>Wystąpił nieznany błąd (%1).</translation>
    </message>
    <message>
        <source>There is no such file.</source>
        <translation>Nie ma takiego pliku.</translation>
    </message>
    <message>
        <source>This is a folder, not a medium.</source>
        <translation>To jest folder, a nie plik multimedialny.</translation>
    </message>
    <message>
        <source>You may not read this file.</source>
        <translation>Nie wolno odczytać tego pliku.</translation>
    </message>
    <message>
        <source>The file is empty.</source>
        <translation>Plik jest pusty.</translation>
    </message>
    <message>
        <source>There is no microphone, or the sound server does not answer.</source>
        <translation>Nie ma mikrofonu albo serwer dźwięku nie odpowiada.</translation>
    </message>
    <message>
        <source>The name of a recording ends in .wav, .ogg, .opus, .flac, .mp3, .m4a or .amr.</source>
        <translation>Nazwa nagrania kończy się na .wav, .ogg, .opus, .flac, .mp3, .m4a lub .amr.</translation>
    </message>
    <message>
        <source>There is no such folder.</source>
        <translation>Nie ma takiego folderu.</translation>
    </message>
    <message>
        <source>You may not write in this folder.</source>
        <translation>Nie wolno zapisywać w tym folderze.</translation>
    </message>
    <message>
        <source>The disk is full.</source>
        <translation>Dysk jest pełny.</translation>
    </message>
    <message>
        <source>The sound server does not answer, or what this file leads to is missing.</source>
        <translation>Serwer dźwięku nie odpowiada albo brakuje tego, do czego prowadzi ten plik.</translation>
    </message>
</context>
<context>
    <name>Files</name>
    <message>
        <source>A name is missing.</source>
        <translation>Brakuje nazwy.</translation>
    </message>
    <message>
        <source>A name has no slash and begins with no dot.</source>
        <translation>Nazwa nie zawiera ukośnika i nie zaczyna się kropką.</translation>
    </message>
    <message>
        <source>There is already “%1”.</source>
        <translation>„%1” już istnieje.</translation>
    </message>
    <message>
        <source>It cannot be renamed: %1.</source>
        <translation>Nie można zmienić nazwy: %1.</translation>
    </message>
    <message>
        <source>It cannot be deleted: %1.</source>
        <translation>Nie można usunąć: %1.</translation>
    </message>
    <message>
        <source>%1 (cut short)</source>
        <translation>%1 (przerwane)</translation>
    </message>
    <message>
        <source>The playlist cannot be written: %1.</source>
        <translation>Nie można zapisać listy: %1.</translation>
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
        <translation>%1 min</translation>
    </message>
    <message>
        <source>%1 hours</source>
        <translation>%1 godz.</translation>
    </message>
    <message>
        <source>%1 days</source>
        <translation>%1 dni</translation>
    </message>
    <message>
        <source>%1 seconds</source>
        <translation>%1 s</translation>
    </message>
</context>
<context>
    <name>FullScreen</name>
    <message>
        <source>Leave full screen</source>
        <translation>Opuść pełny ekran</translation>
    </message>
</context>
<context>
    <name>KeySheet</name>
    <message>
        <source>Quit</source>
        <translation>Zakończ</translation>
    </message>
    <message>
        <source>Show this list</source>
        <translation>Pokaż tę listę</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Klawisze</translation>
    </message>
</context>
<context>
    <name>LevelMeter</name>
    <message>
        <source>Level</source>
        <translation>Poziom</translation>
    </message>
    <message>
        <source>%1 percent</source>
        <translation>%1 procent</translation>
    </message>
    <message>
        <source>Too loud</source>
        <translation>Za głośno</translation>
    </message>
    <message>
        <source>Nothing is heard</source>
        <translation>Nic nie słychać</translation>
    </message>
</context>
<context>
    <name>LibraryLine</name>
    <message>
        <source>Playlist</source>
        <translation>Lista odtwarzania</translation>
    </message>
    <message>
        <source>Delete “%1”</source>
        <translation>Usuń „%1”</translation>
    </message>
    <message>
        <source>Add “%1”</source>
        <translation>Dodaj „%1”</translation>
    </message>
</context>
<context>
    <name>LibraryPage</name>
    <message>
        <source>Folder above</source>
        <translation>Folder nadrzędny</translation>
    </message>
    <message>
        <source>Play all</source>
        <translation>Odtwórz wszystko</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Szukaj</translation>
    </message>
    <message>
        <source>Order</source>
        <translation>Kolejność</translation>
    </message>
    <message>
        <source>Title, artist or album</source>
        <translation>Tytuł, wykonawca lub album</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Biblioteka</translation>
    </message>
    <message>
        <source>Nothing to play in this folder</source>
        <translation>Nie ma tu nic do odtworzenia</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <translation>Nic nie znaleziono</translation>
    </message>
    <message>
        <source>Names of files, titles, artists and albums are searched, in this folder and below it.</source>
        <translation>Przeszukiwane są nazwy plików, tytuły, wykonawcy i albumy w tym folderze i poniżej.</translation>
    </message>
    <message>
        <source>By folder</source>
        <translation>Według folderu</translation>
    </message>
    <message>
        <source>By title</source>
        <translation>Według tytułu</translation>
    </message>
    <message>
        <source>By artist</source>
        <translation>Według wykonawcy</translation>
    </message>
    <message>
        <source>By album</source>
        <translation>Według albumu</translation>
    </message>
    <message>
        <source>Delete the playlist?</source>
        <translation>Usunąć listę?</translation>
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
        <translation>Spacja</translation>
    </message>
    <message>
        <source>Play or pause</source>
        <translation>Odtwórz lub wstrzymaj</translation>
    </message>
    <message>
        <source>10 seconds back or on</source>
        <translation>10 sekund wstecz lub naprzód</translation>
    </message>
    <message>
        <source>Louder or softer, beside the library</source>
        <translation>Głośniej lub ciszej, poza biblioteką</translation>
    </message>
    <message>
        <source>Louder or softer</source>
        <translation>Głośniej lub ciszej</translation>
    </message>
    <message>
        <source>Sound off or on</source>
        <translation>Wycisz lub włącz dźwięk</translation>
    </message>
    <message>
        <source>Next or previous track</source>
        <translation>Następny lub poprzedni utwór</translation>
    </message>
    <message>
        <source>Slower or faster</source>
        <translation>Wolniej lub szybciej</translation>
    </message>
    <message>
        <source>Queue</source>
        <translation>Kolejka</translation>
    </message>
    <message>
        <source>Repeat</source>
        <translation>Powtarzaj</translation>
    </message>
    <message>
        <source>Mix the order</source>
        <translation>Wymieszaj kolejność</translation>
    </message>
    <message>
        <source>Captions on or off</source>
        <translation>Napisy włączone lub nie</translation>
    </message>
    <message>
        <source>Full screen</source>
        <translation>Pełny ekran</translation>
    </message>
    <message>
        <source>Go on where it stopped last time</source>
        <translation>Kontynuuj od miejsca zatrzymania</translation>
    </message>
    <message>
        <source>Open files</source>
        <translation>Otwórz pliki</translation>
    </message>
    <message>
        <source>Open an address</source>
        <translation>Otwórz adres</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Szukaj</translation>
    </message>
    <message>
        <source>Escape</source>
        <translation>Escape</translation>
    </message>
    <message>
        <source>Back, or to the folder above</source>
        <translation>Wstecz lub do folderu wyżej</translation>
    </message>
    <message>
        <source>Open files…</source>
        <translation>Otwórz pliki…</translation>
    </message>
    <message>
        <source>Open an address…</source>
        <translation>Otwórz adres…</translation>
    </message>
    <message>
        <source>Sleep timer</source>
        <translation>Wyłącznik czasowy</translation>
    </message>
    <message>
        <source>Sleep timer: on</source>
        <translation>Wyłącznik czasowy: włączony</translation>
    </message>
    <message>
        <source>Record, hold or go on</source>
        <translation>Nagraj, wstrzymaj lub wznów</translation>
    </message>
    <message>
        <source>Enter</source>
        <translation>Enter</translation>
    </message>
    <message>
        <source>Finish the recording, or play one of the list</source>
        <translation>Zakończ nagranie lub odtwórz jedno z listy</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Usuń</translation>
    </message>
    <message>
        <source>Delete a recording of the list</source>
        <translation>Usuń nagranie z listy</translation>
    </message>
    <message>
        <source>Rename a recording of the list</source>
        <translation>Zmień nazwę nagrania</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>Show the folder</source>
        <translation>Pokaż folder</translation>
    </message>
    <message>
        <source>Recording %1</source>
        <translation>Nagrywanie %1</translation>
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
        <translation>Wstecz lub naprzód</translation>
    </message>
    <message>
        <source>The device does not answer.</source>
        <translation>Urządzenie nie odpowiada.</translation>
    </message>
    <message>
        <source>Nothing is playing</source>
        <translation>Nic nie jest odtwarzane</translation>
    </message>
    <message>
        <source>What plays on this device shows up here.</source>
        <translation>Tu pojawi się to, co gra na tym urządzeniu.</translation>
    </message>
    <message>
        <source>Played by %1</source>
        <translation>Odtwarza %1</translation>
    </message>
    <message>
        <source>Plays in a random order</source>
        <translation>Losowa kolejność</translation>
    </message>
    <message>
        <source>Plays in order</source>
        <translation>Po kolei</translation>
    </message>
    <message>
        <source>Previous track</source>
        <translation>Poprzedni utwór</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Wstrzymaj</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Odtwórz</translation>
    </message>
    <message>
        <source>Next track</source>
        <translation>Następny utwór</translation>
    </message>
    <message>
        <source>Repeats the track</source>
        <translation>Powtarza utwór</translation>
    </message>
    <message>
        <source>Repeats everything</source>
        <translation>Powtarza wszystko</translation>
    </message>
    <message>
        <source>Repeats nothing</source>
        <translation>Niczego nie powtarza</translation>
    </message>
    <message>
        <source>Softer</source>
        <translation>Ciszej</translation>
    </message>
    <message>
        <source>Sound on</source>
        <translation>Włącz dźwięk</translation>
    </message>
    <message>
        <source>Sound off</source>
        <translation>Wycisz</translation>
    </message>
    <message>
        <source>Louder</source>
        <translation>Głośniej</translation>
    </message>
    <message>
        <source>Sources</source>
        <translation>Źródła</translation>
    </message>
    <message>
        <source>There is nothing in it that can be played.</source>
        <translation>Nie ma w nim nic, co można odtworzyć.</translation>
    </message>
</context>
<context>
    <name>MiniBar</name>
    <message>
        <source>Now playing: %1</source>
        <translation>Teraz: %1</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Wstrzymaj</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Odtwórz</translation>
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
        <translation>Zamknij komunikat</translation>
    </message>
</context>
<context>
    <name>Opening</name>
    <message>
        <source>Open files</source>
        <translation>Otwórz pliki</translation>
    </message>
    <message>
        <source>Open an address</source>
        <translation>Otwórz adres</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Odtwórz</translation>
    </message>
    <message>
        <source>This is no address. One begins with http:// or https://, for example.</source>
        <translation>To nie jest adres. Adres zaczyna się na przykład od http:// lub https://.</translation>
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
        <translation>„%1”: %2</translation>
    </message>
    <message>
        <source>“%1” cannot be played.</source>
        <translation>Nie można odtworzyć „%1”.</translation>
    </message>
    <message>
        <source>The captions “%1” cannot be read.</source>
        <translation>Nie można odczytać napisów „%1”.</translation>
    </message>
</context>
<context>
    <name>PlayerPage</name>
    <message>
        <source>Library</source>
        <translation>Biblioteka</translation>
    </message>
    <message>
        <source>Full screen</source>
        <translation>Pełny ekran</translation>
    </message>
    <message>
        <source>Captions</source>
        <translation>Napisy</translation>
    </message>
    <message>
        <source>Speed: %1×</source>
        <translation>Szybkość: %1×</translation>
    </message>
    <message>
        <source>Equalizer</source>
        <translation>Korektor</translation>
    </message>
    <message>
        <source>Nothing is played</source>
        <translation>Nic nie gra</translation>
    </message>
    <message>
        <source>Go on at %1</source>
        <translation>Kontynuuj od %1</translation>
    </message>
    <message>
        <source>Sound on</source>
        <translation>Włącz dźwięk</translation>
    </message>
    <message>
        <source>Sound off</source>
        <translation>Wycisz</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>Głośność</translation>
    </message>
</context>
<context>
    <name>Progress</name>
    <message>
        <source>Position</source>
        <translation>Pozycja</translation>
    </message>
</context>
<context>
    <name>QueueSheet</name>
    <message>
        <source>Queue</source>
        <translation>Kolejka</translation>
    </message>
    <message>
        <source>Track %1</source>
        <translation>Utwór %1</translation>
    </message>
    <message>
        <source>Take “%1” out</source>
        <translation>Usuń „%1” z kolejki</translation>
    </message>
    <message>
        <source>Move “%1”</source>
        <translation>Przesuń „%1”</translation>
    </message>
</context>
<context>
    <name>RecordPanel</name>
    <message>
        <source>Ogg Opus: small</source>
        <translation>Ogg Opus: mały</translation>
    </message>
    <message>
        <source>Ogg Vorbis: small</source>
        <translation>Ogg Vorbis: mały</translation>
    </message>
    <message>
        <source>MP3: plays anywhere</source>
        <translation>MP3: działa wszędzie</translation>
    </message>
    <message>
        <source>AAC: small, plays on phones</source>
        <translation>AAC: mały, do telefonów</translation>
    </message>
    <message>
        <source>AMR: speech only, tiny</source>
        <translation>AMR: tylko mowa, maleńki</translation>
    </message>
    <message>
        <source>FLAC: without loss</source>
        <translation>FLAC: bezstratny</translation>
    </message>
    <message>
        <source>WAV: as it is</source>
        <translation>WAV: bez zmian</translation>
    </message>
    <message>
        <source>As the microphone has them</source>
        <translation>Jak mikrofon</translation>
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
        <translation>Nagrywanie się zakończyło: %1 To, co nagrano, jest na liście.</translation>
    </message>
    <message>
        <source>Recorded: %1</source>
        <translation>Nagrano: %1</translation>
    </message>
    <message>
        <source>%1 free, enough for %2</source>
        <translation>%1 wolne, wystarczy na %2</translation>
    </message>
    <message>
        <source>Format: %1</source>
        <translation>Format: %1</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Wstrzymaj</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Wznów</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>Nagraj</translation>
    </message>
    <message>
        <source>Channels: %1</source>
        <translation>Kanały: %1</translation>
    </message>
    <message>
        <source>Finish</source>
        <translation>Zakończ</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>Channels</source>
        <translation>Kanały</translation>
    </message>
</context>
<context>
    <name>RecordingLine</name>
    <message>
        <source>Rename “%1”</source>
        <translation>Zmień nazwę „%1”</translation>
    </message>
    <message>
        <source>Delete “%1”</source>
        <translation>Usuń „%1”</translation>
    </message>
</context>
<context>
    <name>RecordingList</name>
    <message>
        <source>There is no program that shows folders. The recordings are in %1.</source>
        <translation>Brak programu do pokazywania folderów. Nagrania są w %1.</translation>
    </message>
    <message>
        <source>Recordings</source>
        <translation>Nagrania</translation>
    </message>
    <message>
        <source>Show the folder</source>
        <translation>Pokaż folder</translation>
    </message>
    <message>
        <source>No recordings yet</source>
        <translation>Nie ma jeszcze nagrań</translation>
    </message>
    <message>
        <source>The red button starts the first one.</source>
        <translation>Czerwony przycisk rozpoczyna pierwsze.</translation>
    </message>
    <message>
        <source>Rename the recording</source>
        <translation>Zmień nazwę nagrania</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Zmień</translation>
    </message>
    <message>
        <source>Delete the recording?</source>
        <translation>Usunąć nagranie?</translation>
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
        <translation>Zamknij</translation>
    </message>
</context>
<context>
    <name>SleepSheet</name>
    <message>
        <source>Sleep timer</source>
        <translation>Wyłącznik czasowy</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Wyłączony</translation>
    </message>
    <message>
        <source>At the end of the track</source>
        <translation>Na końcu utworu</translation>
    </message>
    <message>
        <source>In %1 minutes</source>
        <translation>Za %1 min</translation>
    </message>
</context>
<context>
    <name>SourceSheet</name>
    <message>
        <source>Sources</source>
        <translation>Źródła</translation>
    </message>
    <message>
        <source>Show “%1”</source>
        <translation>Pokaż „%1”</translation>
    </message>
</context>
<context>
    <name>SpeedSheet</name>
    <message>
        <source>Speed</source>
        <translation>Szybkość</translation>
    </message>
</context>
<context>
    <name>StartPage</name>
    <message>
        <source>Go on with “%1”</source>
        <translation>Kontynuuj „%1”</translation>
    </message>
    <message>
        <source>Open files…</source>
        <translation>Otwórz pliki…</translation>
    </message>
    <message>
        <source>Open an address…</source>
        <translation>Otwórz adres…</translation>
    </message>
    <message>
        <source>Play the sample</source>
        <translation>Odtwórz próbkę</translation>
    </message>
</context>
<context>
    <name>Transport</name>
    <message>
        <source>Position</source>
        <translation>Pozycja</translation>
    </message>
    <message>
        <source>Repeats the track</source>
        <translation>Powtarza utwór</translation>
    </message>
    <message>
        <source>Repeats everything</source>
        <translation>Powtarza wszystko</translation>
    </message>
    <message>
        <source>Repeats nothing</source>
        <translation>Niczego nie powtarza</translation>
    </message>
    <message>
        <source>Plays in a mixed order</source>
        <translation>Wymieszana kolejność</translation>
    </message>
    <message>
        <source>Plays in order</source>
        <translation>Po kolei</translation>
    </message>
    <message>
        <source>Previous track</source>
        <translation>Poprzedni utwór</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Wstrzymaj</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Odtwórz</translation>
    </message>
    <message>
        <source>Next track</source>
        <translation>Następny utwór</translation>
    </message>
    <message>
        <source>Queue</source>
        <translation>Kolejka</translation>
    </message>
</context>
</TS>

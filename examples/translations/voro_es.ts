<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es">
<context>
    <name>AboutSheet</name>
    <message>
        <source>Version %1</source>
        <translation>Versión %1</translation>
    </message>
    <message>
        <source>An application on libvoromultimedia. Free software under the Apache License 2.0.</source>
        <translation>Una aplicación basada en libvoromultimedia. Software libre bajo la licencia Apache 2.0.</translation>
    </message>
</context>
<context>
    <name>AddSheet</name>
    <message>
        <source>Add</source>
        <translation>Añadir</translation>
    </message>
    <message>
        <source>Play next</source>
        <translation>Reproducir a continuación</translation>
    </message>
    <message>
        <source>Play at the end of the queue</source>
        <translation>Reproducir al final de la cola</translation>
    </message>
    <message>
        <source>New playlist…</source>
        <translation>Lista nueva…</translation>
    </message>
    <message>
        <source>New playlist</source>
        <translation>Lista de reproducción nueva</translation>
    </message>
    <message>
        <source>My playlist</source>
        <translation>Mi lista</translation>
    </message>
</context>
<context>
    <name>AppMenu</name>
    <message>
        <source>More</source>
        <translation>Más</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Aspecto</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Teclas</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Acerca de</translation>
    </message>
</context>
<context>
    <name>AppearanceSheet</name>
    <message>
        <source>As the system</source>
        <translation>Como el sistema</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Claro</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Oscuro</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Aspecto</translation>
    </message>
    <message>
        <source>High contrast</source>
        <translation>Alto contraste</translation>
    </message>
    <message>
        <source>Size of texts: %1 %</source>
        <translation>Tamaño del texto: %1 %</translation>
    </message>
    <message>
        <source>Size of texts</source>
        <translation>Tamaño del texto</translation>
    </message>
</context>
<context>
    <name>CaptionSheet</name>
    <message>
        <source>Captions</source>
        <translation>Subtítulos</translation>
    </message>
    <message>
        <source>Show captions</source>
        <translation>Mostrar subtítulos</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Captions %1</source>
        <translation>Subtítulos %1</translation>
    </message>
    <message>
        <source>This film has no captions.</source>
        <translation>Esta película no tiene subtítulos.</translation>
    </message>
</context>
<context>
    <name>ConfirmSheet</name>
    <message>
        <source>“%1” cannot be brought back.</source>
        <translation>«%1» no se podrá recuperar.</translation>
    </message>
    <message>
        <source>Keep</source>
        <translation>Conservar</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Eliminar</translation>
    </message>
</context>
<context>
    <name>Cover</name>
    <message>
        <source>Cover</source>
        <translation>Carátula</translation>
    </message>
</context>
<context>
    <name>EqualizerSheet</name>
    <message>
        <source>Equalizer</source>
        <translation>Ecualizador</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Desactivado</translation>
    </message>
    <message>
        <source>Against cabin noise</source>
        <translation>Contra el ruido de cabina</translation>
    </message>
    <message>
        <source>More bass</source>
        <translation>Más graves</translation>
    </message>
    <message>
        <source>More treble</source>
        <translation>Más agudos</translation>
    </message>
    <message>
        <source>Louder voices</source>
        <translation>Voces más fuertes</translation>
    </message>
    <message>
        <source>Less bass</source>
        <translation>Menos graves</translation>
    </message>
    <message>
        <source>Less treble</source>
        <translation>Menos agudos</translation>
    </message>
    <message>
        <source>Softer voices</source>
        <translation>Voces más suaves</translation>
    </message>
    <message>
        <source>Acoustic</source>
        <translation>Acústico</translation>
    </message>
    <message>
        <source>Dance</source>
        <translation>Baile</translation>
    </message>
    <message>
        <source>Electronic</source>
        <translation>Electrónica</translation>
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
        <translation>Piano</translation>
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
        <translation>Voz hablada</translation>
    </message>
</context>
<context>
    <name>ErrorWords</name>
    <message>
        <source>The player failed unexpectedly.</source>
        <translation>El reproductor falló inesperadamente.</translation>
    </message>
    <message>
        <source>This value cannot be used.</source>
        <translation>Este valor no se puede usar.</translation>
    </message>
    <message>
        <source>This is not possible at the moment.</source>
        <translation>No es posible en este momento.</translation>
    </message>
    <message>
        <source>This value is not supported here.</source>
        <translation>Este valor no se admite aquí.</translation>
    </message>
    <message>
        <source>This kind of media cannot be played.</source>
        <translation>Este tipo de medio no se puede reproducir.</translation>
    </message>
    <message>
        <source>The medium does not allow this.</source>
        <translation>El medio no lo permite.</translation>
    </message>
    <message>
        <source>The medium could not be read.</source>
        <translation>No se pudo leer el medio.</translation>
    </message>
    <message>
        <source>The recording could not be written.</source>
        <translation>No se pudo escribir la grabación.</translation>
    </message>
    <message>
        <source>The medium was not found or does not answer.</source>
        <translation>No se encontró el medio o no responde.</translation>
    </message>
    <message>
        <source>The medium is damaged.</source>
        <translation>El medio está dañado.</translation>
    </message>
    <message>
        <source>The output cannot be used.</source>
        <translation>La salida no se puede usar.</translation>
    </message>
    <message>
        <source>There is not enough memory.</source>
        <translation>No hay memoria suficiente.</translation>
    </message>
    <message>
        <source>Something that is needed is missing or in use.</source>
        <translation>Falta algo necesario o está en uso.</translation>
    </message>
    <message>
        <source>This is not permitted.</source>
        <translation>No está permitido.</translation>
    </message>
    <message>
        <source>The player refused this.</source>
        <translation>El reproductor lo rechazó.</translation>
    </message>
    <message>
        <source>An unknown error happened (%1).</source>
        <translation>Se produjo un error desconocido (%1).</translation>
    </message>
    <message>
        <source>There is no such file.</source>
        <translation>No existe tal archivo.</translation>
    </message>
    <message>
        <source>This is a folder, not a medium.</source>
        <translation>Esto es una carpeta, no un medio.</translation>
    </message>
    <message>
        <source>You may not read this file.</source>
        <translation>No tiene permiso para leer este archivo.</translation>
    </message>
    <message>
        <source>The file is empty.</source>
        <translation>El archivo está vacío.</translation>
    </message>
    <message>
        <source>There is no microphone, or the sound server does not answer.</source>
        <translation>No hay micrófono o el servidor de sonido no responde.</translation>
    </message>
    <message>
        <source>The name of a recording ends in .wav, .ogg, .opus, .flac, .mp3, .m4a or .amr.</source>
        <translation>El nombre de una grabación termina en .wav, .ogg, .opus, .flac, .mp3, .m4a o .amr.</translation>
    </message>
    <message>
        <source>There is no such folder.</source>
        <translation>No existe esa carpeta.</translation>
    </message>
    <message>
        <source>You may not write in this folder.</source>
        <translation>No tiene permiso para escribir en esta carpeta.</translation>
    </message>
    <message>
        <source>The disk is full.</source>
        <translation>El disco está lleno.</translation>
    </message>
    <message>
        <source>The sound server does not answer, or what this file leads to is missing.</source>
        <translation>El servidor de sonido no responde o falta aquello a lo que lleva este archivo.</translation>
    </message>
</context>
<context>
    <name>Files</name>
    <message>
        <source>A name is missing.</source>
        <translation>Falta un nombre.</translation>
    </message>
    <message>
        <source>A name has no slash and begins with no dot.</source>
        <translation>Un nombre no lleva barras ni empieza por punto.</translation>
    </message>
    <message>
        <source>There is already “%1”.</source>
        <translation>Ya existe «%1».</translation>
    </message>
    <message>
        <source>It cannot be renamed: %1.</source>
        <translation>No se puede renombrar: %1.</translation>
    </message>
    <message>
        <source>It cannot be deleted: %1.</source>
        <translation>No se puede eliminar: %1.</translation>
    </message>
    <message>
        <source>%1 (cut short)</source>
        <translation>%1 (interrumpida)</translation>
    </message>
    <message>
        <source>The playlist cannot be written: %1.</source>
        <translation>No se puede escribir la lista: %1.</translation>
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
        <translation>%1 minutos</translation>
    </message>
    <message>
        <source>%1 hours</source>
        <translation>%1 horas</translation>
    </message>
    <message>
        <source>%1 days</source>
        <translation>%1 días</translation>
    </message>
    <message>
        <source>%1 seconds</source>
        <translation>%1 segundos</translation>
    </message>
</context>
<context>
    <name>FullScreen</name>
    <message>
        <source>Leave full screen</source>
        <translation>Salir de pantalla completa</translation>
    </message>
</context>
<context>
    <name>KeySheet</name>
    <message>
        <source>Quit</source>
        <translation>Salir</translation>
    </message>
    <message>
        <source>Show this list</source>
        <translation>Mostrar esta lista</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Teclas</translation>
    </message>
</context>
<context>
    <name>LevelMeter</name>
    <message>
        <source>Level</source>
        <translation>Nivel</translation>
    </message>
    <message>
        <source>%1 percent</source>
        <translation>%1 por ciento</translation>
    </message>
    <message>
        <source>Too loud</source>
        <translation>Demasiado alto</translation>
    </message>
    <message>
        <source>Nothing is heard</source>
        <translation>No se oye nada</translation>
    </message>
</context>
<context>
    <name>LibraryLine</name>
    <message>
        <source>Playlist</source>
        <translation>Lista de reproducción</translation>
    </message>
    <message>
        <source>Delete “%1”</source>
        <translation>Eliminar «%1»</translation>
    </message>
    <message>
        <source>Add “%1”</source>
        <translation>Añadir «%1»</translation>
    </message>
</context>
<context>
    <name>LibraryPage</name>
    <message>
        <source>Folder above</source>
        <translation>Carpeta superior</translation>
    </message>
    <message>
        <source>Play all</source>
        <translation>Reproducir todo</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Buscar</translation>
    </message>
    <message>
        <source>Order</source>
        <translation>Orden</translation>
    </message>
    <message>
        <source>Title, artist or album</source>
        <translation>Título, artista o álbum</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Biblioteca</translation>
    </message>
    <message>
        <source>Nothing to play in this folder</source>
        <translation>Nada que reproducir en esta carpeta</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <translation>No se encontró nada</translation>
    </message>
    <message>
        <source>Names of files, titles, artists and albums are searched, in this folder and below it.</source>
        <translation>Se buscan nombres de archivos, títulos, artistas y álbumes en esta carpeta y por debajo.</translation>
    </message>
    <message>
        <source>By folder</source>
        <translation>Por carpeta</translation>
    </message>
    <message>
        <source>By title</source>
        <translation>Por título</translation>
    </message>
    <message>
        <source>By artist</source>
        <translation>Por artista</translation>
    </message>
    <message>
        <source>By album</source>
        <translation>Por álbum</translation>
    </message>
    <message>
        <source>Delete the playlist?</source>
        <translation>¿Eliminar la lista?</translation>
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
        <translation>Espacio</translation>
    </message>
    <message>
        <source>Play or pause</source>
        <translation>Reproducir o pausar</translation>
    </message>
    <message>
        <source>10 seconds back or on</source>
        <translation>10 segundos atrás o adelante</translation>
    </message>
    <message>
        <source>Louder or softer, beside the library</source>
        <translation>Más o menos volumen, fuera de la biblioteca</translation>
    </message>
    <message>
        <source>Louder or softer</source>
        <translation>Más o menos volumen</translation>
    </message>
    <message>
        <source>Sound off or on</source>
        <translation>Silenciar o activar el sonido</translation>
    </message>
    <message>
        <source>Next or previous track</source>
        <translation>Pista siguiente o anterior</translation>
    </message>
    <message>
        <source>Slower or faster</source>
        <translation>Más lento o más rápido</translation>
    </message>
    <message>
        <source>Queue</source>
        <translation>Cola</translation>
    </message>
    <message>
        <source>Repeat</source>
        <translation>Repetir</translation>
    </message>
    <message>
        <source>Mix the order</source>
        <translation>Mezclar el orden</translation>
    </message>
    <message>
        <source>Captions on or off</source>
        <translation>Subtítulos sí o no</translation>
    </message>
    <message>
        <source>Full screen</source>
        <translation>Pantalla completa</translation>
    </message>
    <message>
        <source>Go on where it stopped last time</source>
        <translation>Seguir donde se quedó</translation>
    </message>
    <message>
        <source>Open files</source>
        <translation>Abrir archivos</translation>
    </message>
    <message>
        <source>Open an address</source>
        <translation>Abrir una dirección</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Buscar</translation>
    </message>
    <message>
        <source>Escape</source>
        <translation>Escape</translation>
    </message>
    <message>
        <source>Back, or to the folder above</source>
        <translation>Atrás, o a la carpeta superior</translation>
    </message>
    <message>
        <source>Open files…</source>
        <translation>Abrir archivos…</translation>
    </message>
    <message>
        <source>Open an address…</source>
        <translation>Abrir una dirección…</translation>
    </message>
    <message>
        <source>Sleep timer</source>
        <translation>Temporizador</translation>
    </message>
    <message>
        <source>Sleep timer: on</source>
        <translation>Temporizador: activo</translation>
    </message>
    <message>
        <source>Record, hold or go on</source>
        <translation>Grabar, pausar o seguir</translation>
    </message>
    <message>
        <source>Enter</source>
        <translation>Intro</translation>
    </message>
    <message>
        <source>Finish the recording, or play one of the list</source>
        <translation>Terminar la grabación, o reproducir una de la lista</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Eliminar</translation>
    </message>
    <message>
        <source>Delete a recording of the list</source>
        <translation>Eliminar una grabación</translation>
    </message>
    <message>
        <source>Rename a recording of the list</source>
        <translation>Renombrar una grabación</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Formato</translation>
    </message>
    <message>
        <source>Show the folder</source>
        <translation>Mostrar la carpeta</translation>
    </message>
    <message>
        <source>Recording %1</source>
        <translation>Grabando %1</translation>
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
        <translation>Atrás o adelante</translation>
    </message>
    <message>
        <source>The device does not answer.</source>
        <translation>El dispositivo no responde.</translation>
    </message>
    <message>
        <source>Nothing is playing</source>
        <translation>No suena nada</translation>
    </message>
    <message>
        <source>What plays on this device shows up here.</source>
        <translation>Aquí aparece lo que suena en este dispositivo.</translation>
    </message>
    <message>
        <source>Played by %1</source>
        <translation>Reproducido por %1</translation>
    </message>
    <message>
        <source>Plays in a random order</source>
        <translation>Orden aleatorio</translation>
    </message>
    <message>
        <source>Plays in order</source>
        <translation>En orden</translation>
    </message>
    <message>
        <source>Previous track</source>
        <translation>Pista anterior</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pausar</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Reproducir</translation>
    </message>
    <message>
        <source>Next track</source>
        <translation>Pista siguiente</translation>
    </message>
    <message>
        <source>Repeats the track</source>
        <translation>Repite la pista</translation>
    </message>
    <message>
        <source>Repeats everything</source>
        <translation>Repite todo</translation>
    </message>
    <message>
        <source>Repeats nothing</source>
        <translation>No repite nada</translation>
    </message>
    <message>
        <source>Softer</source>
        <translation>Menos volumen</translation>
    </message>
    <message>
        <source>Sound on</source>
        <translation>Activar el sonido</translation>
    </message>
    <message>
        <source>Sound off</source>
        <translation>Silenciar</translation>
    </message>
    <message>
        <source>Louder</source>
        <translation>Más volumen</translation>
    </message>
    <message>
        <source>Sources</source>
        <translation>Fuentes</translation>
    </message>
    <message>
        <source>There is nothing in it that can be played.</source>
        <translation>No contiene nada que se pueda reproducir.</translation>
    </message>
</context>
<context>
    <name>MiniBar</name>
    <message>
        <source>Now playing: %1</source>
        <translation>Sonando: %1</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pausar</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Reproducir</translation>
    </message>
</context>
<context>
    <name>NameDialog</name>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
</context>
<context>
    <name>Notice</name>
    <message>
        <source>Close the message</source>
        <translation>Cerrar el mensaje</translation>
    </message>
</context>
<context>
    <name>Opening</name>
    <message>
        <source>Open files</source>
        <translation>Abrir archivos</translation>
    </message>
    <message>
        <source>Open an address</source>
        <translation>Abrir una dirección</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Reproducir</translation>
    </message>
    <message>
        <source>This is no address. One begins with http:// or https://, for example.</source>
        <translation>No es una dirección. Las direcciones empiezan, por ejemplo, por http:// o https://.</translation>
    </message>
</context>
<context>
    <name>Picture</name>
    <message>
        <source>Film</source>
        <translation>Película</translation>
    </message>
</context>
<context>
    <name>Playback</name>
    <message>
        <source>“%1”: %2</source>
        <translation>«%1»: %2</translation>
    </message>
    <message>
        <source>“%1” cannot be played.</source>
        <translation>No se puede reproducir «%1».</translation>
    </message>
    <message>
        <source>The captions “%1” cannot be read.</source>
        <translation>Los subtítulos «%1» no se pueden leer.</translation>
    </message>
</context>
<context>
    <name>PlayerPage</name>
    <message>
        <source>Library</source>
        <translation>Biblioteca</translation>
    </message>
    <message>
        <source>Full screen</source>
        <translation>Pantalla completa</translation>
    </message>
    <message>
        <source>Captions</source>
        <translation>Subtítulos</translation>
    </message>
    <message>
        <source>Speed: %1×</source>
        <translation>Velocidad: %1×</translation>
    </message>
    <message>
        <source>Equalizer</source>
        <translation>Ecualizador</translation>
    </message>
    <message>
        <source>Nothing is played</source>
        <translation>No se reproduce nada</translation>
    </message>
    <message>
        <source>Go on at %1</source>
        <translation>Seguir en %1</translation>
    </message>
    <message>
        <source>Sound on</source>
        <translation>Activar el sonido</translation>
    </message>
    <message>
        <source>Sound off</source>
        <translation>Silenciar</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>Volumen</translation>
    </message>
</context>
<context>
    <name>Progress</name>
    <message>
        <source>Position</source>
        <translation>Posición</translation>
    </message>
</context>
<context>
    <name>QueueSheet</name>
    <message>
        <source>Queue</source>
        <translation>Cola</translation>
    </message>
    <message>
        <source>Track %1</source>
        <translation>Pista %1</translation>
    </message>
    <message>
        <source>Take “%1” out</source>
        <translation>Quitar «%1»</translation>
    </message>
    <message>
        <source>Move “%1”</source>
        <translation>Mover «%1»</translation>
    </message>
</context>
<context>
    <name>RecordPanel</name>
    <message>
        <source>Ogg Opus: small</source>
        <translation>Ogg Opus: pequeño</translation>
    </message>
    <message>
        <source>Ogg Vorbis: small</source>
        <translation>Ogg Vorbis: pequeño</translation>
    </message>
    <message>
        <source>MP3: plays anywhere</source>
        <translation>MP3: se oye en todas partes</translation>
    </message>
    <message>
        <source>AAC: small, plays on phones</source>
        <translation>AAC: pequeño, para teléfonos</translation>
    </message>
    <message>
        <source>AMR: speech only, tiny</source>
        <translation>AMR: solo voz, diminuto</translation>
    </message>
    <message>
        <source>FLAC: without loss</source>
        <translation>FLAC: sin pérdida</translation>
    </message>
    <message>
        <source>WAV: as it is</source>
        <translation>WAV: sin cambios</translation>
    </message>
    <message>
        <source>As the microphone has them</source>
        <translation>Como el micrófono</translation>
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
        <translation>Estéreo</translation>
    </message>
    <message>
        <source>The recording has ended: %1 What was recorded is in the list.</source>
        <translation>La grabación ha terminado: %1 Lo grabado está en la lista.</translation>
    </message>
    <message>
        <source>Recorded: %1</source>
        <translation>Grabado: %1</translation>
    </message>
    <message>
        <source>%1 free, enough for %2</source>
        <translation>%1 libres, suficiente para %2</translation>
    </message>
    <message>
        <source>Format: %1</source>
        <translation>Formato: %1</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pausar</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Seguir</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>Grabar</translation>
    </message>
    <message>
        <source>Channels: %1</source>
        <translation>Canales: %1</translation>
    </message>
    <message>
        <source>Finish</source>
        <translation>Terminar</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Formato</translation>
    </message>
    <message>
        <source>Channels</source>
        <translation>Canales</translation>
    </message>
</context>
<context>
    <name>RecordingLine</name>
    <message>
        <source>Rename “%1”</source>
        <translation>Renombrar «%1»</translation>
    </message>
    <message>
        <source>Delete “%1”</source>
        <translation>Eliminar «%1»</translation>
    </message>
</context>
<context>
    <name>RecordingList</name>
    <message>
        <source>There is no program that shows folders. The recordings are in %1.</source>
        <translation>No hay ningún programa que muestre carpetas. Las grabaciones están en %1.</translation>
    </message>
    <message>
        <source>Recordings</source>
        <translation>Grabaciones</translation>
    </message>
    <message>
        <source>Show the folder</source>
        <translation>Mostrar la carpeta</translation>
    </message>
    <message>
        <source>No recordings yet</source>
        <translation>Aún no hay grabaciones</translation>
    </message>
    <message>
        <source>The red button starts the first one.</source>
        <translation>El botón rojo inicia la primera.</translation>
    </message>
    <message>
        <source>Rename the recording</source>
        <translation>Renombrar la grabación</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Renombrar</translation>
    </message>
    <message>
        <source>Delete the recording?</source>
        <translation>¿Eliminar la grabación?</translation>
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
        <translation>Cerrar</translation>
    </message>
</context>
<context>
    <name>SleepSheet</name>
    <message>
        <source>Sleep timer</source>
        <translation>Temporizador</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Desactivado</translation>
    </message>
    <message>
        <source>At the end of the track</source>
        <translation>Al final de la pista</translation>
    </message>
    <message>
        <source>In %1 minutes</source>
        <translation>En %1 minutos</translation>
    </message>
</context>
<context>
    <name>SourceSheet</name>
    <message>
        <source>Sources</source>
        <translation>Fuentes</translation>
    </message>
    <message>
        <source>Show “%1”</source>
        <translation>Mostrar «%1»</translation>
    </message>
</context>
<context>
    <name>SpeedSheet</name>
    <message>
        <source>Speed</source>
        <translation>Velocidad</translation>
    </message>
</context>
<context>
    <name>StartPage</name>
    <message>
        <source>Go on with “%1”</source>
        <translation>Seguir con «%1»</translation>
    </message>
    <message>
        <source>Open files…</source>
        <translation>Abrir archivos…</translation>
    </message>
    <message>
        <source>Open an address…</source>
        <translation>Abrir una dirección…</translation>
    </message>
    <message>
        <source>Play the sample</source>
        <translation>Reproducir la muestra</translation>
    </message>
</context>
<context>
    <name>Transport</name>
    <message>
        <source>Position</source>
        <translation>Posición</translation>
    </message>
    <message>
        <source>Repeats the track</source>
        <translation>Repite la pista</translation>
    </message>
    <message>
        <source>Repeats everything</source>
        <translation>Repite todo</translation>
    </message>
    <message>
        <source>Repeats nothing</source>
        <translation>No repite nada</translation>
    </message>
    <message>
        <source>Plays in a mixed order</source>
        <translation>Orden mezclado</translation>
    </message>
    <message>
        <source>Plays in order</source>
        <translation>En orden</translation>
    </message>
    <message>
        <source>Previous track</source>
        <translation>Pista anterior</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pausar</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Reproducir</translation>
    </message>
    <message>
        <source>Next track</source>
        <translation>Pista siguiente</translation>
    </message>
    <message>
        <source>Queue</source>
        <translation>Cola</translation>
    </message>
</context>
</TS>

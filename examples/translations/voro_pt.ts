<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="pt">
<context>
    <name>AboutSheet</name>
    <message>
        <source>Version %1</source>
        <translation>Versão %1</translation>
    </message>
    <message>
        <source>An application on libvoromultimedia. Free software under the Apache License 2.0.</source>
        <translation>Uma aplicação baseada em libvoromultimedia. Software livre sob a licença Apache 2.0.</translation>
    </message>
</context>
<context>
    <name>AddSheet</name>
    <message>
        <source>Add</source>
        <translation>Adicionar</translation>
    </message>
    <message>
        <source>Play next</source>
        <translation>Reproduzir a seguir</translation>
    </message>
    <message>
        <source>Play at the end of the queue</source>
        <translation>Reproduzir no fim da fila</translation>
    </message>
    <message>
        <source>New playlist…</source>
        <translation>Nova lista…</translation>
    </message>
    <message>
        <source>New playlist</source>
        <translation>Nova lista de reprodução</translation>
    </message>
    <message>
        <source>My playlist</source>
        <translation>A minha lista</translation>
    </message>
</context>
<context>
    <name>AppMenu</name>
    <message>
        <source>More</source>
        <translation>Mais</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Aparência</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Teclas</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Sobre</translation>
    </message>
</context>
<context>
    <name>AppearanceSheet</name>
    <message>
        <source>As the system</source>
        <translation>Como o sistema</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Claro</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Escuro</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Aparência</translation>
    </message>
    <message>
        <source>High contrast</source>
        <translation>Alto contraste</translation>
    </message>
    <message>
        <source>Size of texts: %1 %</source>
        <translation>Tamanho do texto: %1 %</translation>
    </message>
    <message>
        <source>Size of texts</source>
        <translation>Tamanho do texto</translation>
    </message>
</context>
<context>
    <name>CaptionSheet</name>
    <message>
        <source>Captions</source>
        <translation>Legendas</translation>
    </message>
    <message>
        <source>Show captions</source>
        <translation>Mostrar legendas</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Captions %1</source>
        <translation>Legendas %1</translation>
    </message>
    <message>
        <source>This film has no captions.</source>
        <translation>Este filme não tem legendas.</translation>
    </message>
</context>
<context>
    <name>ConfirmSheet</name>
    <message>
        <source>“%1” cannot be brought back.</source>
        <translation>“%1” não poderá ser recuperado.</translation>
    </message>
    <message>
        <source>Keep</source>
        <translation>Manter</translation>
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
        <translation>Capa</translation>
    </message>
</context>
<context>
    <name>EqualizerSheet</name>
    <message>
        <source>Equalizer</source>
        <translation>Equalizador</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Desligado</translation>
    </message>
    <message>
        <source>Against cabin noise</source>
        <translation>Contra o ruído de cabine</translation>
    </message>
    <message>
        <source>More bass</source>
        <translation>Mais graves</translation>
    </message>
    <message>
        <source>More treble</source>
        <translation>Mais agudos</translation>
    </message>
    <message>
        <source>Louder voices</source>
        <translation>Vozes mais altas</translation>
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
        <translation>Vozes mais baixas</translation>
    </message>
    <message>
        <source>Acoustic</source>
        <translation>Acústico</translation>
    </message>
    <message>
        <source>Dance</source>
        <translation>Dança</translation>
    </message>
    <message>
        <source>Electronic</source>
        <translation>Eletrónica</translation>
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
        <translation>Palavra falada</translation>
    </message>
</context>
<context>
    <name>ErrorWords</name>
    <message>
        <source>The player failed unexpectedly.</source>
        <translation>O leitor falhou inesperadamente.</translation>
    </message>
    <message>
        <source>This value cannot be used.</source>
        <translation>Este valor não pode ser usado.</translation>
    </message>
    <message>
        <source>This is not possible at the moment.</source>
        <translation>De momento não é possível.</translation>
    </message>
    <message>
        <source>This value is not supported here.</source>
        <translation>Este valor não é suportado aqui.</translation>
    </message>
    <message>
        <source>This kind of media cannot be played.</source>
        <translation>Este tipo de ficheiro não pode ser reproduzido.</translation>
    </message>
    <message>
        <source>The medium does not allow this.</source>
        <translation>O ficheiro não o permite.</translation>
    </message>
    <message>
        <source>The medium could not be read.</source>
        <translation>Não foi possível ler o ficheiro.</translation>
    </message>
    <message>
        <source>The recording could not be written.</source>
        <translation>Não foi possível escrever a gravação.</translation>
    </message>
    <message>
        <source>The medium was not found or does not answer.</source>
        <translation>O ficheiro não foi encontrado ou não responde.</translation>
    </message>
    <message>
        <source>The medium is damaged.</source>
        <translation>O ficheiro está danificado.</translation>
    </message>
    <message>
        <source>The output cannot be used.</source>
        <translation>A saída não pode ser usada.</translation>
    </message>
    <message>
        <source>There is not enough memory.</source>
        <translation>Não há memória suficiente.</translation>
    </message>
    <message>
        <source>Something that is needed is missing or in use.</source>
        <translation>Algo necessário falta ou está em uso.</translation>
    </message>
    <message>
        <source>This is not permitted.</source>
        <translation>Não é permitido.</translation>
    </message>
    <message>
        <source>The player refused this.</source>
        <translation>O leitor recusou.</translation>
    </message>
    <message>
        <source>An unknown error happened (%1).</source>
        <translation>Ocorreu um erro desconhecido (%1).</translation>
    </message>
    <message>
        <source>There is no such file.</source>
        <translation>Não existe tal ficheiro.</translation>
    </message>
    <message>
        <source>This is a folder, not a medium.</source>
        <translation>Isto é uma pasta, não um ficheiro multimédia.</translation>
    </message>
    <message>
        <source>You may not read this file.</source>
        <translation>Não tem permissão para ler este ficheiro.</translation>
    </message>
    <message>
        <source>The file is empty.</source>
        <translation>O ficheiro está vazio.</translation>
    </message>
    <message>
        <source>There is no microphone, or the sound server does not answer.</source>
        <translation>Não há microfone ou o servidor de som não responde.</translation>
    </message>
    <message>
        <source>The name of a recording ends in .wav, .ogg, .opus, .flac, .mp3, .m4a or .amr.</source>
        <translation>O nome de uma gravação termina em .wav, .ogg, .opus, .flac, .mp3, .m4a ou .amr.</translation>
    </message>
    <message>
        <source>There is no such folder.</source>
        <translation>Esta pasta não existe.</translation>
    </message>
    <message>
        <source>You may not write in this folder.</source>
        <translation>Não tem permissão para escrever nesta pasta.</translation>
    </message>
    <message>
        <source>The disk is full.</source>
        <translation>O disco está cheio.</translation>
    </message>
    <message>
        <source>The sound server does not answer, or what this file leads to is missing.</source>
        <translation>O servidor de som não responde ou falta aquilo a que este ficheiro leva.</translation>
    </message>
</context>
<context>
    <name>Files</name>
    <message>
        <source>A name is missing.</source>
        <translation>Falta um nome.</translation>
    </message>
    <message>
        <source>A name has no slash and begins with no dot.</source>
        <translation>Um nome não tem barras nem começa por ponto.</translation>
    </message>
    <message>
        <source>There is already “%1”.</source>
        <translation>“%1” já existe.</translation>
    </message>
    <message>
        <source>It cannot be renamed: %1.</source>
        <translation>Não é possível mudar o nome: %1.</translation>
    </message>
    <message>
        <source>It cannot be deleted: %1.</source>
        <translation>Não é possível eliminar: %1.</translation>
    </message>
    <message>
        <source>%1 (cut short)</source>
        <translation>%1 (interrompida)</translation>
    </message>
    <message>
        <source>The playlist cannot be written: %1.</source>
        <translation>Não é possível gravar a lista: %1.</translation>
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
        <translation>%1 dias</translation>
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
        <translation>Sair do ecrã inteiro</translation>
    </message>
</context>
<context>
    <name>KeySheet</name>
    <message>
        <source>Quit</source>
        <translation>Sair</translation>
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
        <translation>Nível</translation>
    </message>
    <message>
        <source>%1 percent</source>
        <translation>%1 por cento</translation>
    </message>
    <message>
        <source>Too loud</source>
        <translation>Demasiado alto</translation>
    </message>
    <message>
        <source>Nothing is heard</source>
        <translation>Nada se ouve</translation>
    </message>
</context>
<context>
    <name>LibraryLine</name>
    <message>
        <source>Playlist</source>
        <translation>Lista de reprodução</translation>
    </message>
    <message>
        <source>Delete “%1”</source>
        <translation>Eliminar “%1”</translation>
    </message>
    <message>
        <source>Add “%1”</source>
        <translation>Adicionar “%1”</translation>
    </message>
</context>
<context>
    <name>LibraryPage</name>
    <message>
        <source>Folder above</source>
        <translation>Pasta acima</translation>
    </message>
    <message>
        <source>Play all</source>
        <translation>Reproduzir tudo</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Procurar</translation>
    </message>
    <message>
        <source>Order</source>
        <translation>Ordem</translation>
    </message>
    <message>
        <source>Title, artist or album</source>
        <translation>Título, artista ou álbum</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Biblioteca</translation>
    </message>
    <message>
        <source>Nothing to play in this folder</source>
        <translation>Nada para reproduzir nesta pasta</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <translation>Nada encontrado</translation>
    </message>
    <message>
        <source>Names of files, titles, artists and albums are searched, in this folder and below it.</source>
        <translation>São procurados nomes de ficheiros, títulos, artistas e álbuns nesta pasta e abaixo dela.</translation>
    </message>
    <message>
        <source>By folder</source>
        <translation>Por pasta</translation>
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
        <translation>Eliminar a lista?</translation>
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
        <translation>Espaço</translation>
    </message>
    <message>
        <source>Play or pause</source>
        <translation>Reproduzir ou pausar</translation>
    </message>
    <message>
        <source>10 seconds back or on</source>
        <translation>10 segundos para trás ou para a frente</translation>
    </message>
    <message>
        <source>Louder or softer, beside the library</source>
        <translation>Mais ou menos volume, fora da biblioteca</translation>
    </message>
    <message>
        <source>Louder or softer</source>
        <translation>Mais ou menos volume</translation>
    </message>
    <message>
        <source>Sound off or on</source>
        <translation>Silenciar ou ligar o som</translation>
    </message>
    <message>
        <source>Next or previous track</source>
        <translation>Faixa seguinte ou anterior</translation>
    </message>
    <message>
        <source>Slower or faster</source>
        <translation>Mais lento ou mais rápido</translation>
    </message>
    <message>
        <source>Queue</source>
        <translation>Fila</translation>
    </message>
    <message>
        <source>Repeat</source>
        <translation>Repetir</translation>
    </message>
    <message>
        <source>Mix the order</source>
        <translation>Misturar a ordem</translation>
    </message>
    <message>
        <source>Captions on or off</source>
        <translation>Legendas sim ou não</translation>
    </message>
    <message>
        <source>Full screen</source>
        <translation>Ecrã inteiro</translation>
    </message>
    <message>
        <source>Go on where it stopped last time</source>
        <translation>Continuar onde parou</translation>
    </message>
    <message>
        <source>Open files</source>
        <translation>Abrir ficheiros</translation>
    </message>
    <message>
        <source>Open an address</source>
        <translation>Abrir um endereço</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Procurar</translation>
    </message>
    <message>
        <source>Escape</source>
        <translation>Escape</translation>
    </message>
    <message>
        <source>Back, or to the folder above</source>
        <translation>Voltar, ou à pasta acima</translation>
    </message>
    <message>
        <source>Open files…</source>
        <translation>Abrir ficheiros…</translation>
    </message>
    <message>
        <source>Open an address…</source>
        <translation>Abrir um endereço…</translation>
    </message>
    <message>
        <source>Sleep timer</source>
        <translation>Temporizador</translation>
    </message>
    <message>
        <source>Sleep timer: on</source>
        <translation>Temporizador: ligado</translation>
    </message>
    <message>
        <source>Record, hold or go on</source>
        <translation>Gravar, pausar ou continuar</translation>
    </message>
    <message>
        <source>Enter</source>
        <translation>Enter</translation>
    </message>
    <message>
        <source>Finish the recording, or play one of the list</source>
        <translation>Terminar a gravação, ou reproduzir uma da lista</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Eliminar</translation>
    </message>
    <message>
        <source>Delete a recording of the list</source>
        <translation>Eliminar uma gravação</translation>
    </message>
    <message>
        <source>Rename a recording of the list</source>
        <translation>Mudar o nome de uma gravação</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Formato</translation>
    </message>
    <message>
        <source>Show the folder</source>
        <translation>Mostrar a pasta</translation>
    </message>
    <message>
        <source>Recording %1</source>
        <translation>A gravar %1</translation>
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
        <translation>Para trás ou para a frente</translation>
    </message>
    <message>
        <source>The device does not answer.</source>
        <translation>O dispositivo não responde.</translation>
    </message>
    <message>
        <source>Nothing is playing</source>
        <translation>Nada está a tocar</translation>
    </message>
    <message>
        <source>What plays on this device shows up here.</source>
        <translation>Aqui aparece o que toca neste dispositivo.</translation>
    </message>
    <message>
        <source>Played by %1</source>
        <translation>Reproduzido por %1</translation>
    </message>
    <message>
        <source>Plays in a random order</source>
        <translation>Ordem aleatória</translation>
    </message>
    <message>
        <source>Plays in order</source>
        <translation>Por ordem</translation>
    </message>
    <message>
        <source>Previous track</source>
        <translation>Faixa anterior</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pausar</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Reproduzir</translation>
    </message>
    <message>
        <source>Next track</source>
        <translation>Faixa seguinte</translation>
    </message>
    <message>
        <source>Repeats the track</source>
        <translation>Repete a faixa</translation>
    </message>
    <message>
        <source>Repeats everything</source>
        <translation>Repete tudo</translation>
    </message>
    <message>
        <source>Repeats nothing</source>
        <translation>Não repete nada</translation>
    </message>
    <message>
        <source>Softer</source>
        <translation>Mais baixo</translation>
    </message>
    <message>
        <source>Sound on</source>
        <translation>Ligar o som</translation>
    </message>
    <message>
        <source>Sound off</source>
        <translation>Silenciar</translation>
    </message>
    <message>
        <source>Louder</source>
        <translation>Mais alto</translation>
    </message>
    <message>
        <source>Sources</source>
        <translation>Fontes</translation>
    </message>
    <message>
        <source>There is nothing in it that can be played.</source>
        <translation>Não contém nada que possa ser reproduzido.</translation>
    </message>
</context>
<context>
    <name>MiniBar</name>
    <message>
        <source>Now playing: %1</source>
        <translation>A tocar: %1</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pausar</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Reproduzir</translation>
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
        <translation>Fechar a mensagem</translation>
    </message>
</context>
<context>
    <name>Opening</name>
    <message>
        <source>Open files</source>
        <translation>Abrir ficheiros</translation>
    </message>
    <message>
        <source>Open an address</source>
        <translation>Abrir um endereço</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Reproduzir</translation>
    </message>
    <message>
        <source>This is no address. One begins with http:// or https://, for example.</source>
        <translation>Isto não é um endereço. Um endereço começa, por exemplo, por http:// ou https://.</translation>
    </message>
</context>
<context>
    <name>Picture</name>
    <message>
        <source>Film</source>
        <translation>Filme</translation>
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
        <translation>Não é possível reproduzir “%1”.</translation>
    </message>
    <message>
        <source>The captions “%1” cannot be read.</source>
        <translation>As legendas “%1” não podem ser lidas.</translation>
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
        <translation>Ecrã inteiro</translation>
    </message>
    <message>
        <source>Captions</source>
        <translation>Legendas</translation>
    </message>
    <message>
        <source>Speed: %1×</source>
        <translation>Velocidade: %1×</translation>
    </message>
    <message>
        <source>Equalizer</source>
        <translation>Equalizador</translation>
    </message>
    <message>
        <source>Nothing is played</source>
        <translation>Nada é reproduzido</translation>
    </message>
    <message>
        <source>Go on at %1</source>
        <translation>Continuar em %1</translation>
    </message>
    <message>
        <source>Sound on</source>
        <translation>Ligar o som</translation>
    </message>
    <message>
        <source>Sound off</source>
        <translation>Silenciar</translation>
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
        <translation>Posição</translation>
    </message>
</context>
<context>
    <name>QueueSheet</name>
    <message>
        <source>Queue</source>
        <translation>Fila</translation>
    </message>
    <message>
        <source>Track %1</source>
        <translation>Faixa %1</translation>
    </message>
    <message>
        <source>Take “%1” out</source>
        <translation>Retirar “%1”</translation>
    </message>
    <message>
        <source>Move “%1”</source>
        <translation>Mover “%1”</translation>
    </message>
</context>
<context>
    <name>RecordPanel</name>
    <message>
        <source>Ogg Opus: small</source>
        <translation>Ogg Opus: pequeno</translation>
    </message>
    <message>
        <source>Ogg Vorbis: small</source>
        <translation>Ogg Vorbis: pequeno</translation>
    </message>
    <message>
        <source>MP3: plays anywhere</source>
        <translation>MP3: toca em todo o lado</translation>
    </message>
    <message>
        <source>AAC: small, plays on phones</source>
        <translation>AAC: pequeno, para telefones</translation>
    </message>
    <message>
        <source>AMR: speech only, tiny</source>
        <translation>AMR: só voz, minúsculo</translation>
    </message>
    <message>
        <source>FLAC: without loss</source>
        <translation>FLAC: sem perda</translation>
    </message>
    <message>
        <source>WAV: as it is</source>
        <translation>WAV: tal como é</translation>
    </message>
    <message>
        <source>As the microphone has them</source>
        <translation>Como o microfone</translation>
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
        <translation>A gravação terminou: %1 O que foi gravado está na lista.</translation>
    </message>
    <message>
        <source>Recorded: %1</source>
        <translation>Gravado: %1</translation>
    </message>
    <message>
        <source>%1 free, enough for %2</source>
        <translation>%1 livres, chega para %2</translation>
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
        <translation>Continuar</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>Gravar</translation>
    </message>
    <message>
        <source>Channels: %1</source>
        <translation>Canais: %1</translation>
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
        <translation>Canais</translation>
    </message>
</context>
<context>
    <name>RecordingLine</name>
    <message>
        <source>Rename “%1”</source>
        <translation>Mudar o nome de “%1”</translation>
    </message>
    <message>
        <source>Delete “%1”</source>
        <translation>Eliminar “%1”</translation>
    </message>
</context>
<context>
    <name>RecordingList</name>
    <message>
        <source>There is no program that shows folders. The recordings are in %1.</source>
        <translation>Não há um programa que mostre pastas. As gravações estão em %1.</translation>
    </message>
    <message>
        <source>Recordings</source>
        <translation>Gravações</translation>
    </message>
    <message>
        <source>Show the folder</source>
        <translation>Mostrar a pasta</translation>
    </message>
    <message>
        <source>No recordings yet</source>
        <translation>Ainda não há gravações</translation>
    </message>
    <message>
        <source>The red button starts the first one.</source>
        <translation>O botão vermelho inicia a primeira.</translation>
    </message>
    <message>
        <source>Rename the recording</source>
        <translation>Mudar o nome da gravação</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Renomear</translation>
    </message>
    <message>
        <source>Delete the recording?</source>
        <translation>Eliminar a gravação?</translation>
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
        <translation>Fechar</translation>
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
        <translation>Desligado</translation>
    </message>
    <message>
        <source>At the end of the track</source>
        <translation>No fim da faixa</translation>
    </message>
    <message>
        <source>In %1 minutes</source>
        <translation>Em %1 minutos</translation>
    </message>
</context>
<context>
    <name>SourceSheet</name>
    <message>
        <source>Sources</source>
        <translation>Fontes</translation>
    </message>
    <message>
        <source>Show “%1”</source>
        <translation>Mostrar “%1”</translation>
    </message>
</context>
<context>
    <name>SpeedSheet</name>
    <message>
        <source>Speed</source>
        <translation>Velocidade</translation>
    </message>
</context>
<context>
    <name>StartPage</name>
    <message>
        <source>Go on with “%1”</source>
        <translation>Continuar com “%1”</translation>
    </message>
    <message>
        <source>Open files…</source>
        <translation>Abrir ficheiros…</translation>
    </message>
    <message>
        <source>Open an address…</source>
        <translation>Abrir um endereço…</translation>
    </message>
    <message>
        <source>Play the sample</source>
        <translation>Reproduzir a amostra</translation>
    </message>
</context>
<context>
    <name>Transport</name>
    <message>
        <source>Position</source>
        <translation>Posição</translation>
    </message>
    <message>
        <source>Repeats the track</source>
        <translation>Repete a faixa</translation>
    </message>
    <message>
        <source>Repeats everything</source>
        <translation>Repete tudo</translation>
    </message>
    <message>
        <source>Repeats nothing</source>
        <translation>Não repete nada</translation>
    </message>
    <message>
        <source>Plays in a mixed order</source>
        <translation>Ordem misturada</translation>
    </message>
    <message>
        <source>Plays in order</source>
        <translation>Por ordem</translation>
    </message>
    <message>
        <source>Previous track</source>
        <translation>Faixa anterior</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pausar</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Reproduzir</translation>
    </message>
    <message>
        <source>Next track</source>
        <translation>Faixa seguinte</translation>
    </message>
    <message>
        <source>Queue</source>
        <translation>Fila</translation>
    </message>
</context>
</TS>

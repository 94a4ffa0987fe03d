<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr">
<context>
    <name>AboutSheet</name>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>An application on libvoromultimedia. Free software under the Apache License 2.0.</source>
        <translation>Une application basée sur libvoromultimedia. Logiciel libre sous licence Apache 2.0.</translation>
    </message>
</context>
<context>
    <name>AddSheet</name>
    <message>
        <source>Add</source>
        <translation>Ajouter</translation>
    </message>
    <message>
        <source>Play next</source>
        <translation>Lire ensuite</translation>
    </message>
    <message>
        <source>Play at the end of the queue</source>
        <translation>Lire à la fin de la file</translation>
    </message>
    <message>
        <source>New playlist…</source>
        <translation>Nouvelle liste…</translation>
    </message>
    <message>
        <source>New playlist</source>
        <translation>Nouvelle liste de lecture</translation>
    </message>
    <message>
        <source>My playlist</source>
        <translation>Ma liste</translation>
    </message>
</context>
<context>
    <name>AppMenu</name>
    <message>
        <source>More</source>
        <translation>Plus</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Apparence</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Touches</translation>
    </message>
    <message>
        <source>About</source>
        <translation>À propos</translation>
    </message>
</context>
<context>
    <name>AppearanceSheet</name>
    <message>
        <source>As the system</source>
        <translation>Comme le système</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Clair</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Sombre</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Apparence</translation>
    </message>
    <message>
        <source>High contrast</source>
        <translation>Contraste élevé</translation>
    </message>
    <message>
        <source>Size of texts: %1 %</source>
        <translation>Taille du texte : %1 %</translation>
    </message>
    <message>
        <source>Size of texts</source>
        <translation>Taille du texte</translation>
    </message>
</context>
<context>
    <name>CaptionSheet</name>
    <message>
        <source>Captions</source>
        <translation>Sous-titres</translation>
    </message>
    <message>
        <source>Show captions</source>
        <translation>Afficher les sous-titres</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Captions %1</source>
        <translation>Sous-titres %1</translation>
    </message>
    <message>
        <source>This film has no captions.</source>
        <translation>Ce film n’a pas de sous-titres.</translation>
    </message>
</context>
<context>
    <name>ConfirmSheet</name>
    <message>
        <source>“%1” cannot be brought back.</source>
        <translation>« %1 » ne pourra pas être récupéré.</translation>
    </message>
    <message>
        <source>Keep</source>
        <translation>Garder</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Supprimer</translation>
    </message>
</context>
<context>
    <name>Cover</name>
    <message>
        <source>Cover</source>
        <translation>Pochette</translation>
    </message>
</context>
<context>
    <name>EqualizerSheet</name>
    <message>
        <source>Equalizer</source>
        <translation>Égaliseur</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Désactivé</translation>
    </message>
    <message>
        <source>Against cabin noise</source>
        <translation>Contre le bruit de cabine</translation>
    </message>
    <message>
        <source>More bass</source>
        <translation>Plus de graves</translation>
    </message>
    <message>
        <source>More treble</source>
        <translation>Plus d’aigus</translation>
    </message>
    <message>
        <source>Louder voices</source>
        <translation>Voix plus fortes</translation>
    </message>
    <message>
        <source>Less bass</source>
        <translation>Moins de graves</translation>
    </message>
    <message>
        <source>Less treble</source>
        <translation>Moins d’aigus</translation>
    </message>
    <message>
        <source>Softer voices</source>
        <translation>Voix plus douces</translation>
    </message>
    <message>
        <source>Acoustic</source>
        <translation>Acoustique</translation>
    </message>
    <message>
        <source>Dance</source>
        <translation>Danse</translation>
    </message>
    <message>
        <source>Electronic</source>
        <translation>Électronique</translation>
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
        <translation>Parole</translation>
    </message>
</context>
<context>
    <name>ErrorWords</name>
    <message>
        <source>The player failed unexpectedly.</source>
        <translation>Le lecteur s’est arrêté de façon inattendue.</translation>
    </message>
    <message>
        <source>This value cannot be used.</source>
        <translation>Cette valeur est inutilisable.</translation>
    </message>
    <message>
        <source>This is not possible at the moment.</source>
        <translation>Ce n’est pas possible pour l’instant.</translation>
    </message>
    <message>
        <source>This value is not supported here.</source>
        <translation>Cette valeur n’est pas prise en charge ici.</translation>
    </message>
    <message>
        <source>This kind of media cannot be played.</source>
        <translation>Ce type de média ne peut pas être lu.</translation>
    </message>
    <message>
        <source>The medium does not allow this.</source>
        <translation>Le média ne le permet pas.</translation>
    </message>
    <message>
        <source>The medium could not be read.</source>
        <translation>Le média n’a pas pu être lu.</translation>
    </message>
    <message>
        <source>The recording could not be written.</source>
        <translation>L’enregistrement n’a pas pu être écrit.</translation>
    </message>
    <message>
        <source>The medium was not found or does not answer.</source>
        <translation>Le média est introuvable ou ne répond pas.</translation>
    </message>
    <message>
        <source>The medium is damaged.</source>
        <translation>Le média est endommagé.</translation>
    </message>
    <message>
        <source>The output cannot be used.</source>
        <translation>La sortie est inutilisable.</translation>
    </message>
    <message>
        <source>There is not enough memory.</source>
        <translation>La mémoire est insuffisante.</translation>
    </message>
    <message>
        <source>Something that is needed is missing or in use.</source>
        <translation>Il manque un élément nécessaire, ou il est occupé.</translation>
    </message>
    <message>
        <source>This is not permitted.</source>
        <translation>Ce n’est pas autorisé.</translation>
    </message>
    <message>
        <source>The player refused this.</source>
        <translation>Le lecteur a refusé.</translation>
    </message>
    <message>
        <source>An unknown error happened (%1).</source>
        <translation>Une erreur inconnue s’est produite (%1).</translation>
    </message>
    <message>
        <source>There is no such file.</source>
        <translation>Ce fichier n’existe pas.</translation>
    </message>
    <message>
        <source>This is a folder, not a medium.</source>
        <translation>C’est un dossier, pas un média.</translation>
    </message>
    <message>
        <source>You may not read this file.</source>
        <translation>Vous n’avez pas le droit de lire ce fichier.</translation>
    </message>
    <message>
        <source>The file is empty.</source>
        <translation>Le fichier est vide.</translation>
    </message>
    <message>
        <source>There is no microphone, or the sound server does not answer.</source>
        <translation>Il n’y a pas de microphone, ou le serveur de son ne répond pas.</translation>
    </message>
    <message>
        <source>The name of a recording ends in .wav, .ogg, .opus, .flac, .mp3, .m4a or .amr.</source>
        <translation>Le nom d’un enregistrement se termine par .wav, .ogg, .opus, .flac, .mp3, .m4a ou .amr.</translation>
    </message>
    <message>
        <source>There is no such folder.</source>
        <translation>Ce dossier n’existe pas.</translation>
    </message>
    <message>
        <source>You may not write in this folder.</source>
        <translation>Vous n’avez pas le droit d’écrire dans ce dossier.</translation>
    </message>
    <message>
        <source>The disk is full.</source>
        <translation>Le disque est plein.</translation>
    </message>
    <message>
        <source>The sound server does not answer, or what this file leads to is missing.</source>
        <translation>Le serveur de son ne répond pas, ou ce à quoi mène ce fichier est introuvable.</translation>
    </message>
</context>
<context>
    <name>Files</name>
    <message>
        <source>A name is missing.</source>
        <translation>Il manque un nom.</translation>
    </message>
    <message>
        <source>A name has no slash and begins with no dot.</source>
        <translation>Un nom ne contient pas de barre oblique et ne commence pas par un point.</translation>
    </message>
    <message>
        <source>There is already “%1”.</source>
        <translation>« %1 » existe déjà.</translation>
    </message>
    <message>
        <source>It cannot be renamed: %1.</source>
        <translation>Impossible de renommer : %1.</translation>
    </message>
    <message>
        <source>It cannot be deleted: %1.</source>
        <translation>Impossible de supprimer : %1.</translation>
    </message>
    <message>
        <source>%1 (cut short)</source>
        <translation>%1 (interrompu)</translation>
    </message>
    <message>
        <source>The playlist cannot be written: %1.</source>
        <translation>Impossible d’écrire la liste : %1.</translation>
    </message>
</context>
<context>
    <name>Format</name>
    <message>
        <source>%1 B</source>
        <translation>%1 o</translation>
    </message>
    <message>
        <source>%1 kB</source>
        <translation>%1 ko</translation>
    </message>
    <message>
        <source>%1 GB</source>
        <translation>%1 Go</translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation>%1 Mo</translation>
    </message>
    <message>
        <source>%1 minutes</source>
        <translation>%1 minutes</translation>
    </message>
    <message>
        <source>%1 hours</source>
        <translation>%1 heures</translation>
    </message>
    <message>
        <source>%1 days</source>
        <translation>%1 jours</translation>
    </message>
    <message>
        <source>%1 seconds</source>
        <translation>%1 secondes</translation>
    </message>
</context>
<context>
    <name>FullScreen</name>
    <message>
        <source>Leave full screen</source>
        <translation>Quitter le plein écran</translation>
    </message>
</context>
<context>
    <name>KeySheet</name>
    <message>
        <source>Quit</source>
        <translation>Quitter</translation>
    </message>
    <message>
        <source>Show this list</source>
        <translation>Afficher cette liste</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Touches</translation>
    </message>
</context>
<context>
    <name>LevelMeter</name>
    <message>
        <source>Level</source>
        <translation>Niveau</translation>
    </message>
    <message>
        <source>%1 percent</source>
        <translation>%1 pour cent</translation>
    </message>
    <message>
        <source>Too loud</source>
        <translation>Trop fort</translation>
    </message>
    <message>
        <source>Nothing is heard</source>
        <translation>Aucun son</translation>
    </message>
</context>
<context>
    <name>LibraryLine</name>
    <message>
        <source>Playlist</source>
        <translation>Liste de lecture</translation>
    </message>
    <message>
        <source>Delete “%1”</source>
        <translation>Supprimer « %1 »</translation>
    </message>
    <message>
        <source>Add “%1”</source>
        <translation>Ajouter « %1 »</translation>
    </message>
</context>
<context>
    <name>LibraryPage</name>
    <message>
        <source>Folder above</source>
        <translation>Dossier parent</translation>
    </message>
    <message>
        <source>Play all</source>
        <translation>Tout lire</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Rechercher</translation>
    </message>
    <message>
        <source>Order</source>
        <translation>Ordre</translation>
    </message>
    <message>
        <source>Title, artist or album</source>
        <translation>Titre, artiste ou album</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Bibliothèque</translation>
    </message>
    <message>
        <source>Nothing to play in this folder</source>
        <translation>Rien à lire dans ce dossier</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <translation>Rien trouvé</translation>
    </message>
    <message>
        <source>Names of files, titles, artists and albums are searched, in this folder and below it.</source>
        <translation>La recherche porte sur les noms de fichiers, titres, artistes et albums, dans ce dossier et au-dessous.</translation>
    </message>
    <message>
        <source>By folder</source>
        <translation>Par dossier</translation>
    </message>
    <message>
        <source>By title</source>
        <translation>Par titre</translation>
    </message>
    <message>
        <source>By artist</source>
        <translation>Par artiste</translation>
    </message>
    <message>
        <source>By album</source>
        <translation>Par album</translation>
    </message>
    <message>
        <source>Delete the playlist?</source>
        <translation>Supprimer la liste de lecture ?</translation>
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
        <translation>Espace</translation>
    </message>
    <message>
        <source>Play or pause</source>
        <translation>Lire ou mettre en pause</translation>
    </message>
    <message>
        <source>10 seconds back or on</source>
        <translation>10 secondes en arrière ou en avant</translation>
    </message>
    <message>
        <source>Louder or softer, beside the library</source>
        <translation>Plus ou moins fort, hors de la bibliothèque</translation>
    </message>
    <message>
        <source>Louder or softer</source>
        <translation>Plus ou moins fort</translation>
    </message>
    <message>
        <source>Sound off or on</source>
        <translation>Couper ou rétablir le son</translation>
    </message>
    <message>
        <source>Next or previous track</source>
        <translation>Piste suivante ou précédente</translation>
    </message>
    <message>
        <source>Slower or faster</source>
        <translation>Plus lent ou plus rapide</translation>
    </message>
    <message>
        <source>Queue</source>
        <translation>File d’attente</translation>
    </message>
    <message>
        <source>Repeat</source>
        <translation>Répéter</translation>
    </message>
    <message>
        <source>Mix the order</source>
        <translation>Mélanger l’ordre</translation>
    </message>
    <message>
        <source>Captions on or off</source>
        <translation>Sous-titres oui ou non</translation>
    </message>
    <message>
        <source>Full screen</source>
        <translation>Plein écran</translation>
    </message>
    <message>
        <source>Go on where it stopped last time</source>
        <translation>Reprendre là où on s’était arrêté</translation>
    </message>
    <message>
        <source>Open files</source>
        <translation>Ouvrir des fichiers</translation>
    </message>
    <message>
        <source>Open an address</source>
        <translation>Ouvrir une adresse</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Rechercher</translation>
    </message>
    <message>
        <source>Escape</source>
        <translation>Échap</translation>
    </message>
    <message>
        <source>Back, or to the folder above</source>
        <translation>Retour, ou dossier parent</translation>
    </message>
    <message>
        <source>Open files…</source>
        <translation>Ouvrir des fichiers…</translation>
    </message>
    <message>
        <source>Open an address…</source>
        <translation>Ouvrir une adresse…</translation>
    </message>
    <message>
        <source>Sleep timer</source>
        <translation>Minuterie de veille</translation>
    </message>
    <message>
        <source>Sleep timer: on</source>
        <translation>Minuterie : active</translation>
    </message>
    <message>
        <source>Record, hold or go on</source>
        <translation>Enregistrer, suspendre, reprendre</translation>
    </message>
    <message>
        <source>Enter</source>
        <translation>Entrée</translation>
    </message>
    <message>
        <source>Finish the recording, or play one of the list</source>
        <translation>Terminer l’enregistrement, ou en lire un de la liste</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Supprimer</translation>
    </message>
    <message>
        <source>Delete a recording of the list</source>
        <translation>Supprimer un enregistrement</translation>
    </message>
    <message>
        <source>Rename a recording of the list</source>
        <translation>Renommer un enregistrement</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>Show the folder</source>
        <translation>Afficher le dossier</translation>
    </message>
    <message>
        <source>Recording %1</source>
        <translation>Enregistrement %1</translation>
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
        <translation>En arrière ou en avant</translation>
    </message>
    <message>
        <source>The device does not answer.</source>
        <translation>L’appareil ne répond pas.</translation>
    </message>
    <message>
        <source>Nothing is playing</source>
        <translation>Rien en cours de lecture</translation>
    </message>
    <message>
        <source>What plays on this device shows up here.</source>
        <translation>Ce qui est lu sur cet appareil apparaît ici.</translation>
    </message>
    <message>
        <source>Played by %1</source>
        <translation>Lu par %1</translation>
    </message>
    <message>
        <source>Plays in a random order</source>
        <translation>Lecture aléatoire</translation>
    </message>
    <message>
        <source>Plays in order</source>
        <translation>Lecture dans l’ordre</translation>
    </message>
    <message>
        <source>Previous track</source>
        <translation>Piste précédente</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Lire</translation>
    </message>
    <message>
        <source>Next track</source>
        <translation>Piste suivante</translation>
    </message>
    <message>
        <source>Repeats the track</source>
        <translation>Répète la piste</translation>
    </message>
    <message>
        <source>Repeats everything</source>
        <translation>Répète tout</translation>
    </message>
    <message>
        <source>Repeats nothing</source>
        <translation>Ne répète rien</translation>
    </message>
    <message>
        <source>Softer</source>
        <translation>Moins fort</translation>
    </message>
    <message>
        <source>Sound on</source>
        <translation>Rétablir le son</translation>
    </message>
    <message>
        <source>Sound off</source>
        <translation>Couper le son</translation>
    </message>
    <message>
        <source>Louder</source>
        <translation>Plus fort</translation>
    </message>
    <message>
        <source>Sources</source>
        <translation>Sources</translation>
    </message>
    <message>
        <source>There is nothing in it that can be played.</source>
        <translation>Il ne contient rien qui puisse être lu.</translation>
    </message>
</context>
<context>
    <name>MiniBar</name>
    <message>
        <source>Now playing: %1</source>
        <translation>En cours : %1</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Lire</translation>
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
        <translation>Fermer le message</translation>
    </message>
</context>
<context>
    <name>Opening</name>
    <message>
        <source>Open files</source>
        <translation>Ouvrir des fichiers</translation>
    </message>
    <message>
        <source>Open an address</source>
        <translation>Ouvrir une adresse</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Lire</translation>
    </message>
    <message>
        <source>This is no address. One begins with http:// or https://, for example.</source>
        <translation>Ce n’est pas une adresse. Une adresse commence par exemple par http:// ou https://.</translation>
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
        <translation>« %1 » : %2</translation>
    </message>
    <message>
        <source>“%1” cannot be played.</source>
        <translation>Impossible de lire « %1 ».</translation>
    </message>
    <message>
        <source>The captions “%1” cannot be read.</source>
        <translation>Les sous-titres « %1 » sont illisibles.</translation>
    </message>
</context>
<context>
    <name>PlayerPage</name>
    <message>
        <source>Library</source>
        <translation>Bibliothèque</translation>
    </message>
    <message>
        <source>Full screen</source>
        <translation>Plein écran</translation>
    </message>
    <message>
        <source>Captions</source>
        <translation>Sous-titres</translation>
    </message>
    <message>
        <source>Speed: %1×</source>
        <translation>Vitesse : %1×</translation>
    </message>
    <message>
        <source>Equalizer</source>
        <translation>Égaliseur</translation>
    </message>
    <message>
        <source>Nothing is played</source>
        <translation>Rien n’est lu</translation>
    </message>
    <message>
        <source>Go on at %1</source>
        <translation>Reprendre à %1</translation>
    </message>
    <message>
        <source>Sound on</source>
        <translation>Rétablir le son</translation>
    </message>
    <message>
        <source>Sound off</source>
        <translation>Couper le son</translation>
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
        <translation>Position</translation>
    </message>
</context>
<context>
    <name>QueueSheet</name>
    <message>
        <source>Queue</source>
        <translation>File d’attente</translation>
    </message>
    <message>
        <source>Track %1</source>
        <translation>Piste %1</translation>
    </message>
    <message>
        <source>Take “%1” out</source>
        <translation>Retirer « %1 »</translation>
    </message>
    <message>
        <source>Move “%1”</source>
        <translation>Déplacer « %1 »</translation>
    </message>
</context>
<context>
    <name>RecordPanel</name>
    <message>
        <source>Ogg Opus: small</source>
        <translation>Ogg Opus : petit</translation>
    </message>
    <message>
        <source>Ogg Vorbis: small</source>
        <translation>Ogg Vorbis : petit</translation>
    </message>
    <message>
        <source>MP3: plays anywhere</source>
        <translation>MP3 : lisible partout</translation>
    </message>
    <message>
        <source>AAC: small, plays on phones</source>
        <translation>AAC : petit, pour téléphones</translation>
    </message>
    <message>
        <source>AMR: speech only, tiny</source>
        <translation>AMR : parole, minuscule</translation>
    </message>
    <message>
        <source>FLAC: without loss</source>
        <translation>FLAC : sans perte</translation>
    </message>
    <message>
        <source>WAV: as it is</source>
        <translation>WAV : tel quel</translation>
    </message>
    <message>
        <source>As the microphone has them</source>
        <translation>Comme le microphone</translation>
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
        <translation>Stéréo</translation>
    </message>
    <message>
        <source>The recording has ended: %1 What was recorded is in the list.</source>
        <translation>L’enregistrement s’est arrêté : %1 Ce qui a été enregistré est dans la liste.</translation>
    </message>
    <message>
        <source>Recorded: %1</source>
        <translation>Enregistré : %1</translation>
    </message>
    <message>
        <source>%1 free, enough for %2</source>
        <translation>%1 libres, assez pour %2</translation>
    </message>
    <message>
        <source>Format: %1</source>
        <translation>Format : %1</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Suspendre</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Reprendre</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>Enregistrer</translation>
    </message>
    <message>
        <source>Channels: %1</source>
        <translation>Canaux : %1</translation>
    </message>
    <message>
        <source>Finish</source>
        <translation>Terminer</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>Channels</source>
        <translation>Canaux</translation>
    </message>
</context>
<context>
    <name>RecordingLine</name>
    <message>
        <source>Rename “%1”</source>
        <translation>Renommer « %1 »</translation>
    </message>
    <message>
        <source>Delete “%1”</source>
        <translation>Supprimer « %1 »</translation>
    </message>
</context>
<context>
    <name>RecordingList</name>
    <message>
        <source>There is no program that shows folders. The recordings are in %1.</source>
        <translation>Aucun programme n’affiche les dossiers. Les enregistrements sont dans %1.</translation>
    </message>
    <message>
        <source>Recordings</source>
        <translation>Enregistrements</translation>
    </message>
    <message>
        <source>Show the folder</source>
        <translation>Afficher le dossier</translation>
    </message>
    <message>
        <source>No recordings yet</source>
        <translation>Aucun enregistrement</translation>
    </message>
    <message>
        <source>The red button starts the first one.</source>
        <translation>Le bouton rouge lance le premier.</translation>
    </message>
    <message>
        <source>Rename the recording</source>
        <translation>Renommer l’enregistrement</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Renommer</translation>
    </message>
    <message>
        <source>Delete the recording?</source>
        <translation>Supprimer l’enregistrement ?</translation>
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
        <translation>Fermer</translation>
    </message>
</context>
<context>
    <name>SleepSheet</name>
    <message>
        <source>Sleep timer</source>
        <translation>Minuterie de veille</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Désactivé</translation>
    </message>
    <message>
        <source>At the end of the track</source>
        <translation>À la fin de la piste</translation>
    </message>
    <message>
        <source>In %1 minutes</source>
        <translation>Dans %1 minutes</translation>
    </message>
</context>
<context>
    <name>SourceSheet</name>
    <message>
        <source>Sources</source>
        <translation>Sources</translation>
    </message>
    <message>
        <source>Show “%1”</source>
        <translation>Afficher « %1 »</translation>
    </message>
</context>
<context>
    <name>SpeedSheet</name>
    <message>
        <source>Speed</source>
        <translation>Vitesse</translation>
    </message>
</context>
<context>
    <name>StartPage</name>
    <message>
        <source>Go on with “%1”</source>
        <translation>Reprendre « %1 »</translation>
    </message>
    <message>
        <source>Open files…</source>
        <translation>Ouvrir des fichiers…</translation>
    </message>
    <message>
        <source>Open an address…</source>
        <translation>Ouvrir une adresse…</translation>
    </message>
    <message>
        <source>Play the sample</source>
        <translation>Lire l’exemple</translation>
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
        <translation>Répète la piste</translation>
    </message>
    <message>
        <source>Repeats everything</source>
        <translation>Répète tout</translation>
    </message>
    <message>
        <source>Repeats nothing</source>
        <translation>Ne répète rien</translation>
    </message>
    <message>
        <source>Plays in a mixed order</source>
        <translation>Lecture mélangée</translation>
    </message>
    <message>
        <source>Plays in order</source>
        <translation>Lecture dans l’ordre</translation>
    </message>
    <message>
        <source>Previous track</source>
        <translation>Piste précédente</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Lire</translation>
    </message>
    <message>
        <source>Next track</source>
        <translation>Piste suivante</translation>
    </message>
    <message>
        <source>Queue</source>
        <translation>File d’attente</translation>
    </message>
</context>
</TS>

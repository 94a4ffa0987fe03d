<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja">
<context>
    <name>AboutSheet</name>
    <message>
        <source>Version %1</source>
        <translation>バージョン %1</translation>
    </message>
    <message>
        <source>An application on libvoromultimedia. Free software under the Apache License 2.0.</source>
        <translation>libvoromultimedia を使ったアプリケーションです。Apache License 2.0 の自由ソフトウェアです。</translation>
    </message>
</context>
<context>
    <name>AddSheet</name>
    <message>
        <source>Add</source>
        <translation>追加</translation>
    </message>
    <message>
        <source>Play next</source>
        <translation>次に再生</translation>
    </message>
    <message>
        <source>Play at the end of the queue</source>
        <translation>再生待ちの最後に追加</translation>
    </message>
    <message>
        <source>New playlist…</source>
        <translation>新しいプレイリスト…</translation>
    </message>
    <message>
        <source>New playlist</source>
        <translation>新しいプレイリスト</translation>
    </message>
    <message>
        <source>My playlist</source>
        <translation>マイプレイリスト</translation>
    </message>
</context>
<context>
    <name>AppMenu</name>
    <message>
        <source>More</source>
        <translation>その他</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>外観</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>キー操作</translation>
    </message>
    <message>
        <source>About</source>
        <translation>このアプリについて</translation>
    </message>
</context>
<context>
    <name>AppearanceSheet</name>
    <message>
        <source>As the system</source>
        <translation>システムに合わせる</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>ライト</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>ダーク</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>外観</translation>
    </message>
    <message>
        <source>High contrast</source>
        <translation>ハイコントラスト</translation>
    </message>
    <message>
        <source>Size of texts: %1 %</source>
        <translation>文字の大きさ: %1 %</translation>
    </message>
    <message>
        <source>Size of texts</source>
        <translation>文字の大きさ</translation>
    </message>
</context>
<context>
    <name>CaptionSheet</name>
    <message>
        <source>Captions</source>
        <translation>字幕</translation>
    </message>
    <message>
        <source>Show captions</source>
        <translation>字幕を表示</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1（%2）</translation>
    </message>
    <message>
        <source>Captions %1</source>
        <translation>字幕 %1</translation>
    </message>
    <message>
        <source>This film has no captions.</source>
        <translation>この動画には字幕がありません。</translation>
    </message>
</context>
<context>
    <name>ConfirmSheet</name>
    <message>
        <source>“%1” cannot be brought back.</source>
        <translation>「%1」は元に戻せません。</translation>
    </message>
    <message>
        <source>Keep</source>
        <translation>残す</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>削除</translation>
    </message>
</context>
<context>
    <name>Cover</name>
    <message>
        <source>Cover</source>
        <translation>カバー</translation>
    </message>
</context>
<context>
    <name>EqualizerSheet</name>
    <message>
        <source>Equalizer</source>
        <translation>イコライザー</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>オフ</translation>
    </message>
    <message>
        <source>Against cabin noise</source>
        <translation>機内の騒音対策</translation>
    </message>
    <message>
        <source>More bass</source>
        <translation>低音を強調</translation>
    </message>
    <message>
        <source>More treble</source>
        <translation>高音を強調</translation>
    </message>
    <message>
        <source>Louder voices</source>
        <translation>声を大きく</translation>
    </message>
    <message>
        <source>Less bass</source>
        <translation>低音を弱める</translation>
    </message>
    <message>
        <source>Less treble</source>
        <translation>高音を弱める</translation>
    </message>
    <message>
        <source>Softer voices</source>
        <translation>声を小さく</translation>
    </message>
    <message>
        <source>Acoustic</source>
        <translation>アコースティック</translation>
    </message>
    <message>
        <source>Dance</source>
        <translation>ダンス</translation>
    </message>
    <message>
        <source>Electronic</source>
        <translation>エレクトロニック</translation>
    </message>
    <message>
        <source>Hip hop</source>
        <translation>ヒップホップ</translation>
    </message>
    <message>
        <source>Jazz</source>
        <translation>ジャズ</translation>
    </message>
    <message>
        <source>Lounge</source>
        <translation>ラウンジ</translation>
    </message>
    <message>
        <source>Piano</source>
        <translation>ピアノ</translation>
    </message>
    <message>
        <source>Rhythm and blues</source>
        <translation>R&amp;B</translation>
    </message>
    <message>
        <source>Rock</source>
        <translation>ロック</translation>
    </message>
    <message>
        <source>Spoken word</source>
        <translation>話し声</translation>
    </message>
</context>
<context>
    <name>ErrorWords</name>
    <message>
        <source>The player failed unexpectedly.</source>
        <translation>プレーヤーが予期せず停止しました。</translation>
    </message>
    <message>
        <source>This value cannot be used.</source>
        <translation>この値は使えません。</translation>
    </message>
    <message>
        <source>This is not possible at the moment.</source>
        <translation>現在この操作はできません。</translation>
    </message>
    <message>
        <source>This value is not supported here.</source>
        <translation>この値はここでは使えません。</translation>
    </message>
    <message>
        <source>This kind of media cannot be played.</source>
        <translation>この種類のメディアは再生できません。</translation>
    </message>
    <message>
        <source>The medium does not allow this.</source>
        <translation>このメディアではできません。</translation>
    </message>
    <message>
        <source>The medium could not be read.</source>
        <translation>メディアを読み取れませんでした。</translation>
    </message>
    <message>
        <source>The recording could not be written.</source>
        <translation>録音を書き込めませんでした。</translation>
    </message>
    <message>
        <source>The medium was not found or does not answer.</source>
        <translation>メディアが見つからないか、応答しません。</translation>
    </message>
    <message>
        <source>The medium is damaged.</source>
        <translation>メディアが壊れています。</translation>
    </message>
    <message>
        <source>The output cannot be used.</source>
        <translation>出力先を使えません。</translation>
    </message>
    <message>
        <source>There is not enough memory.</source>
        <translation>メモリーが足りません。</translation>
    </message>
    <message>
        <source>Something that is needed is missing or in use.</source>
        <translation>必要なものがないか、使用中です。</translation>
    </message>
    <message>
        <source>This is not permitted.</source>
        <translation>許可されていません。</translation>
    </message>
    <message>
        <source>The player refused this.</source>
        <translation>プレーヤーが拒否しました。</translation>
    </message>
    <message>
        <source>An unknown error happened (%1).</source>
        <translation>不明なエラーが発生しました (%1)。</translation>
    </message>
    <message>
        <source>There is no such file.</source>
        <translation>そのファイルはありません。</translation>
    </message>
    <message>
        <source>This is a folder, not a medium.</source>
        <translation>これはメディアではなくフォルダーです。</translation>
    </message>
    <message>
        <source>You may not read this file.</source>
        <translation>このファイルを読み取る権限がありません。</translation>
    </message>
    <message>
        <source>The file is empty.</source>
        <translation>ファイルが空です。</translation>
    </message>
    <message>
        <source>There is no microphone, or the sound server does not answer.</source>
        <translation>マイクがないか、サウンドサーバーが応答しません。</translation>
    </message>
    <message>
        <source>The name of a recording ends in .wav, .ogg, .opus, .flac, .mp3, .m4a or .amr.</source>
        <translation>録音の名前は .wav、.ogg、.opus、.flac、.mp3、.m4a、.amr のいずれかで終わります。</translation>
    </message>
    <message>
        <source>There is no such folder.</source>
        <translation>そのフォルダーはありません。</translation>
    </message>
    <message>
        <source>You may not write in this folder.</source>
        <translation>このフォルダーに書き込む権限がありません。</translation>
    </message>
    <message>
        <source>The disk is full.</source>
        <translation>ディスクがいっぱいです。</translation>
    </message>
    <message>
        <source>The sound server does not answer, or what this file leads to is missing.</source>
        <translation>サウンドサーバーが応答しないか、このファイルの参照先がありません。</translation>
    </message>
</context>
<context>
    <name>Files</name>
    <message>
        <source>A name is missing.</source>
        <translation>名前がありません。</translation>
    </message>
    <message>
        <source>A name has no slash and begins with no dot.</source>
        <translation>名前にスラッシュは使えず、ドットで始めることもできません。</translation>
    </message>
    <message>
        <source>There is already “%1”.</source>
        <translation>「%1」は既にあります。</translation>
    </message>
    <message>
        <source>It cannot be renamed: %1.</source>
        <translation>名前を変更できません: %1</translation>
    </message>
    <message>
        <source>It cannot be deleted: %1.</source>
        <translation>削除できません: %1</translation>
    </message>
    <message>
        <source>%1 (cut short)</source>
        <translation>%1 (途中まで)</translation>
    </message>
    <message>
        <source>The playlist cannot be written: %1.</source>
        <translation>プレイリストに書き込めません: %1</translation>
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
        <translation>%1分</translation>
    </message>
    <message>
        <source>%1 hours</source>
        <translation>%1時間</translation>
    </message>
    <message>
        <source>%1 days</source>
        <translation>%1日</translation>
    </message>
    <message>
        <source>%1 seconds</source>
        <translation>%1 秒</translation>
    </message>
</context>
<context>
    <name>FullScreen</name>
    <message>
        <source>Leave full screen</source>
        <translation>全画面表示を終了</translation>
    </message>
</context>
<context>
    <name>KeySheet</name>
    <message>
        <source>Quit</source>
        <translation>終了</translation>
    </message>
    <message>
        <source>Show this list</source>
        <translation>この一覧を表示</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>キー操作</translation>
    </message>
</context>
<context>
    <name>LevelMeter</name>
    <message>
        <source>Level</source>
        <translation>レベル</translation>
    </message>
    <message>
        <source>%1 percent</source>
        <translation>%1パーセント</translation>
    </message>
    <message>
        <source>Too loud</source>
        <translation>音が大きすぎます</translation>
    </message>
    <message>
        <source>Nothing is heard</source>
        <translation>音がありません</translation>
    </message>
</context>
<context>
    <name>LibraryLine</name>
    <message>
        <source>Playlist</source>
        <translation>プレイリスト</translation>
    </message>
    <message>
        <source>Delete “%1”</source>
        <translation>「%1」を削除</translation>
    </message>
    <message>
        <source>Add “%1”</source>
        <translation>「%1」を追加</translation>
    </message>
</context>
<context>
    <name>LibraryPage</name>
    <message>
        <source>Folder above</source>
        <translation>上のフォルダー</translation>
    </message>
    <message>
        <source>Play all</source>
        <translation>すべて再生</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>検索</translation>
    </message>
    <message>
        <source>Order</source>
        <translation>並び順</translation>
    </message>
    <message>
        <source>Title, artist or album</source>
        <translation>タイトル、アーティスト、アルバム</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>ライブラリ</translation>
    </message>
    <message>
        <source>Nothing to play in this folder</source>
        <translation>このフォルダーに再生できるものはありません</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <translation>見つかりません</translation>
    </message>
    <message>
        <source>Names of files, titles, artists and albums are searched, in this folder and below it.</source>
        <translation>このフォルダー以下のファイル名、タイトル、アーティスト、アルバムを検索します。</translation>
    </message>
    <message>
        <source>By folder</source>
        <translation>フォルダー順</translation>
    </message>
    <message>
        <source>By title</source>
        <translation>タイトル順</translation>
    </message>
    <message>
        <source>By artist</source>
        <translation>アーティスト順</translation>
    </message>
    <message>
        <source>By album</source>
        <translation>アルバム順</translation>
    </message>
    <message>
        <source>Delete the playlist?</source>
        <translation>プレイリストを削除しますか?</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Voro Player</source>
        <translation>Voro プレーヤー</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>スペース</translation>
    </message>
    <message>
        <source>Play or pause</source>
        <translation>再生または一時停止</translation>
    </message>
    <message>
        <source>10 seconds back or on</source>
        <translation>10秒戻るまたは進む</translation>
    </message>
    <message>
        <source>Louder or softer, beside the library</source>
        <translation>音量を上げるまたは下げる (ライブラリ以外)</translation>
    </message>
    <message>
        <source>Louder or softer</source>
        <translation>音量を上げるまたは下げる</translation>
    </message>
    <message>
        <source>Sound off or on</source>
        <translation>消音または解除</translation>
    </message>
    <message>
        <source>Next or previous track</source>
        <translation>次または前のトラック</translation>
    </message>
    <message>
        <source>Slower or faster</source>
        <translation>遅くまたは速く</translation>
    </message>
    <message>
        <source>Queue</source>
        <translation>再生待ち</translation>
    </message>
    <message>
        <source>Repeat</source>
        <translation>繰り返し</translation>
    </message>
    <message>
        <source>Mix the order</source>
        <translation>シャッフル</translation>
    </message>
    <message>
        <source>Captions on or off</source>
        <translation>字幕のオンまたはオフ</translation>
    </message>
    <message>
        <source>Full screen</source>
        <translation>全画面表示</translation>
    </message>
    <message>
        <source>Go on where it stopped last time</source>
        <translation>前回の続きから再生</translation>
    </message>
    <message>
        <source>Open files</source>
        <translation>ファイルを開く</translation>
    </message>
    <message>
        <source>Open an address</source>
        <translation>アドレスを開く</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>検索</translation>
    </message>
    <message>
        <source>Escape</source>
        <translation>Esc</translation>
    </message>
    <message>
        <source>Back, or to the folder above</source>
        <translation>戻る、または上のフォルダーへ</translation>
    </message>
    <message>
        <source>Open files…</source>
        <translation>ファイルを開く…</translation>
    </message>
    <message>
        <source>Open an address…</source>
        <translation>アドレスを開く…</translation>
    </message>
    <message>
        <source>Sleep timer</source>
        <translation>スリープタイマー</translation>
    </message>
    <message>
        <source>Sleep timer: on</source>
        <translation>スリープタイマー: オン</translation>
    </message>
    <message>
        <source>Record, hold or go on</source>
        <translation>録音、一時停止、再開</translation>
    </message>
    <message>
        <source>Enter</source>
        <translation>Enter</translation>
    </message>
    <message>
        <source>Finish the recording, or play one of the list</source>
        <translation>録音を終了、または一覧から再生</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>削除</translation>
    </message>
    <message>
        <source>Delete a recording of the list</source>
        <translation>一覧の録音を削除</translation>
    </message>
    <message>
        <source>Rename a recording of the list</source>
        <translation>一覧の録音の名前を変更</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>形式</translation>
    </message>
    <message>
        <source>Show the folder</source>
        <translation>フォルダーを表示</translation>
    </message>
    <message>
        <source>Recording %1</source>
        <translation>録音中 %1</translation>
    </message>
    <message>
        <source>Voro Recorder</source>
        <translation>Voro レコーダー</translation>
    </message>
    <message>
        <source>Voro Remote</source>
        <translation>Voro リモコン</translation>
    </message>
    <message>
        <source>Back or on</source>
        <translation>戻るまたは進む</translation>
    </message>
    <message>
        <source>The device does not answer.</source>
        <translation>デバイスが応答しません。</translation>
    </message>
    <message>
        <source>Nothing is playing</source>
        <translation>再生中のものはありません</translation>
    </message>
    <message>
        <source>What plays on this device shows up here.</source>
        <translation>このデバイスで再生中のものがここに表示されます。</translation>
    </message>
    <message>
        <source>Played by %1</source>
        <translation>%1 で再生中</translation>
    </message>
    <message>
        <source>Plays in a random order</source>
        <translation>ランダムな順序で再生</translation>
    </message>
    <message>
        <source>Plays in order</source>
        <translation>順番に再生</translation>
    </message>
    <message>
        <source>Previous track</source>
        <translation>前のトラック</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>一時停止</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>再生</translation>
    </message>
    <message>
        <source>Next track</source>
        <translation>次のトラック</translation>
    </message>
    <message>
        <source>Repeats the track</source>
        <translation>1曲を繰り返す</translation>
    </message>
    <message>
        <source>Repeats everything</source>
        <translation>すべてを繰り返す</translation>
    </message>
    <message>
        <source>Repeats nothing</source>
        <translation>繰り返さない</translation>
    </message>
    <message>
        <source>Softer</source>
        <translation>音量を下げる</translation>
    </message>
    <message>
        <source>Sound on</source>
        <translation>消音を解除</translation>
    </message>
    <message>
        <source>Sound off</source>
        <translation>消音</translation>
    </message>
    <message>
        <source>Louder</source>
        <translation>音量を上げる</translation>
    </message>
    <message>
        <source>Sources</source>
        <translation>再生元</translation>
    </message>
    <message>
        <source>There is nothing in it that can be played.</source>
        <translation>再生できるものが入っていません。</translation>
    </message>
</context>
<context>
    <name>MiniBar</name>
    <message>
        <source>Now playing: %1</source>
        <translation>再生中: %1</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>一時停止</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>再生</translation>
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
        <translation>メッセージを閉じる</translation>
    </message>
</context>
<context>
    <name>Opening</name>
    <message>
        <source>Open files</source>
        <translation>ファイルを開く</translation>
    </message>
    <message>
        <source>Open an address</source>
        <translation>アドレスを開く</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>再生</translation>
    </message>
    <message>
        <source>This is no address. One begins with http:// or https://, for example.</source>
        <translation>これはアドレスではありません。アドレスは http:// や https:// などで始まります。</translation>
    </message>
</context>
<context>
    <name>Picture</name>
    <message>
        <source>Film</source>
        <translation>映像</translation>
    </message>
</context>
<context>
    <name>Playback</name>
    <message>
        <source>“%1”: %2</source>
        <translation>「%1」: %2</translation>
    </message>
    <message>
        <source>“%1” cannot be played.</source>
        <translation>「%1」は再生できません。</translation>
    </message>
    <message>
        <source>The captions “%1” cannot be read.</source>
        <translation>字幕「%1」を読み取れません。</translation>
    </message>
</context>
<context>
    <name>PlayerPage</name>
    <message>
        <source>Library</source>
        <translation>ライブラリ</translation>
    </message>
    <message>
        <source>Full screen</source>
        <translation>全画面表示</translation>
    </message>
    <message>
        <source>Captions</source>
        <translation>字幕</translation>
    </message>
    <message>
        <source>Speed: %1×</source>
        <translation>速度: %1×</translation>
    </message>
    <message>
        <source>Equalizer</source>
        <translation>イコライザー</translation>
    </message>
    <message>
        <source>Nothing is played</source>
        <translation>再生していません</translation>
    </message>
    <message>
        <source>Go on at %1</source>
        <translation>%1 から再開</translation>
    </message>
    <message>
        <source>Sound on</source>
        <translation>消音を解除</translation>
    </message>
    <message>
        <source>Sound off</source>
        <translation>消音</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>音量</translation>
    </message>
</context>
<context>
    <name>Progress</name>
    <message>
        <source>Position</source>
        <translation>再生位置</translation>
    </message>
</context>
<context>
    <name>QueueSheet</name>
    <message>
        <source>Queue</source>
        <translation>再生待ち</translation>
    </message>
    <message>
        <source>Track %1</source>
        <translation>トラック %1</translation>
    </message>
    <message>
        <source>Take “%1” out</source>
        <translation>「%1」を外す</translation>
    </message>
    <message>
        <source>Move “%1”</source>
        <translation>「%1」を移動</translation>
    </message>
</context>
<context>
    <name>RecordPanel</name>
    <message>
        <source>Ogg Opus: small</source>
        <translation>Ogg Opus: 小さい</translation>
    </message>
    <message>
        <source>Ogg Vorbis: small</source>
        <translation>Ogg Vorbis: 小さい</translation>
    </message>
    <message>
        <source>MP3: plays anywhere</source>
        <translation>MP3: どこでも再生可能</translation>
    </message>
    <message>
        <source>AAC: small, plays on phones</source>
        <translation>AAC: 小さい、携帯向け</translation>
    </message>
    <message>
        <source>AMR: speech only, tiny</source>
        <translation>AMR: 音声のみ、極小</translation>
    </message>
    <message>
        <source>FLAC: without loss</source>
        <translation>FLAC: 劣化なし</translation>
    </message>
    <message>
        <source>WAV: as it is</source>
        <translation>WAV: そのまま</translation>
    </message>
    <message>
        <source>As the microphone has them</source>
        <translation>マイクに合わせる</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>自動</translation>
    </message>
    <message>
        <source>Mono</source>
        <translation>モノラル</translation>
    </message>
    <message>
        <source>Stereo</source>
        <translation>ステレオ</translation>
    </message>
    <message>
        <source>The recording has ended: %1 What was recorded is in the list.</source>
        <translation>録音が終了しました: %1 録音された部分は一覧にあります。</translation>
    </message>
    <message>
        <source>Recorded: %1</source>
        <translation>録音時間: %1</translation>
    </message>
    <message>
        <source>%1 free, enough for %2</source>
        <translation>空き %1、約%2録音できます</translation>
    </message>
    <message>
        <source>Format: %1</source>
        <translation>形式: %1</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>一時停止</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>再開</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>録音</translation>
    </message>
    <message>
        <source>Channels: %1</source>
        <translation>チャンネル: %1</translation>
    </message>
    <message>
        <source>Finish</source>
        <translation>完了</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>形式</translation>
    </message>
    <message>
        <source>Channels</source>
        <translation>チャンネル</translation>
    </message>
</context>
<context>
    <name>RecordingLine</name>
    <message>
        <source>Rename “%1”</source>
        <translation>「%1」の名前を変更</translation>
    </message>
    <message>
        <source>Delete “%1”</source>
        <translation>「%1」を削除</translation>
    </message>
</context>
<context>
    <name>RecordingList</name>
    <message>
        <source>There is no program that shows folders. The recordings are in %1.</source>
        <translation>フォルダーを表示するプログラムがありません。録音は %1 にあります。</translation>
    </message>
    <message>
        <source>Recordings</source>
        <translation>録音</translation>
    </message>
    <message>
        <source>Show the folder</source>
        <translation>フォルダーを表示</translation>
    </message>
    <message>
        <source>No recordings yet</source>
        <translation>録音はまだありません</translation>
    </message>
    <message>
        <source>The red button starts the first one.</source>
        <translation>赤いボタンで最初の録音を始めます。</translation>
    </message>
    <message>
        <source>Rename the recording</source>
        <translation>録音の名前を変更</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>変更</translation>
    </message>
    <message>
        <source>Delete the recording?</source>
        <translation>録音を削除しますか?</translation>
    </message>
</context>
<context>
    <name>Role</name>
    <message>
        <source>Voro Player</source>
        <translation>Voro プレーヤー</translation>
    </message>
</context>
<context>
    <name>Sheet</name>
    <message>
        <source>Close</source>
        <translation>閉じる</translation>
    </message>
</context>
<context>
    <name>SleepSheet</name>
    <message>
        <source>Sleep timer</source>
        <translation>スリープタイマー</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>オフ</translation>
    </message>
    <message>
        <source>At the end of the track</source>
        <translation>トラックの終わり</translation>
    </message>
    <message>
        <source>In %1 minutes</source>
        <translation>%1分後</translation>
    </message>
</context>
<context>
    <name>SourceSheet</name>
    <message>
        <source>Sources</source>
        <translation>再生元</translation>
    </message>
    <message>
        <source>Show “%1”</source>
        <translation>「%1」を表示</translation>
    </message>
</context>
<context>
    <name>SpeedSheet</name>
    <message>
        <source>Speed</source>
        <translation>速度</translation>
    </message>
</context>
<context>
    <name>StartPage</name>
    <message>
        <source>Go on with “%1”</source>
        <translation>「%1」の続き</translation>
    </message>
    <message>
        <source>Open files…</source>
        <translation>ファイルを開く…</translation>
    </message>
    <message>
        <source>Open an address…</source>
        <translation>アドレスを開く…</translation>
    </message>
    <message>
        <source>Play the sample</source>
        <translation>サンプルを再生</translation>
    </message>
</context>
<context>
    <name>Transport</name>
    <message>
        <source>Position</source>
        <translation>再生位置</translation>
    </message>
    <message>
        <source>Repeats the track</source>
        <translation>1曲を繰り返す</translation>
    </message>
    <message>
        <source>Repeats everything</source>
        <translation>すべてを繰り返す</translation>
    </message>
    <message>
        <source>Repeats nothing</source>
        <translation>繰り返さない</translation>
    </message>
    <message>
        <source>Plays in a mixed order</source>
        <translation>シャッフル再生</translation>
    </message>
    <message>
        <source>Plays in order</source>
        <translation>順番に再生</translation>
    </message>
    <message>
        <source>Previous track</source>
        <translation>前のトラック</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>一時停止</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>再生</translation>
    </message>
    <message>
        <source>Next track</source>
        <translation>次のトラック</translation>
    </message>
    <message>
        <source>Queue</source>
        <translation>再生待ち</translation>
    </message>
</context>
</TS>

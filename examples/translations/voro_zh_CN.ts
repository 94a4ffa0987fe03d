<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>AboutSheet</name>
    <message>
        <source>Version %1</source>
        <translation>版本 %1</translation>
    </message>
    <message>
        <source>An application on libvoromultimedia. Free software under the Apache License 2.0.</source>
        <translation>基于 libvoromultimedia 的应用程序。采用 Apache 许可证 2.0 的自由软件。</translation>
    </message>
</context>
<context>
    <name>AddSheet</name>
    <message>
        <source>Add</source>
        <translation>添加</translation>
    </message>
    <message>
        <source>Play next</source>
        <translation>下一首播放</translation>
    </message>
    <message>
        <source>Play at the end of the queue</source>
        <translation>添加到队列末尾</translation>
    </message>
    <message>
        <source>New playlist…</source>
        <translation>新建播放列表…</translation>
    </message>
    <message>
        <source>New playlist</source>
        <translation>新建播放列表</translation>
    </message>
    <message>
        <source>My playlist</source>
        <translation>我的播放列表</translation>
    </message>
</context>
<context>
    <name>AppMenu</name>
    <message>
        <source>More</source>
        <translation>更多</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>外观</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>按键</translation>
    </message>
    <message>
        <source>About</source>
        <translation>关于</translation>
    </message>
</context>
<context>
    <name>AppearanceSheet</name>
    <message>
        <source>As the system</source>
        <translation>跟随系统</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>浅色</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>深色</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>外观</translation>
    </message>
    <message>
        <source>High contrast</source>
        <translation>高对比度</translation>
    </message>
    <message>
        <source>Size of texts: %1 %</source>
        <translation>文字大小：%1 %</translation>
    </message>
    <message>
        <source>Size of texts</source>
        <translation>文字大小</translation>
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
        <translation>显示字幕</translation>
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
        <translation>此影片没有字幕。</translation>
    </message>
</context>
<context>
    <name>ConfirmSheet</name>
    <message>
        <source>“%1” cannot be brought back.</source>
        <translation>“%1”将无法恢复。</translation>
    </message>
    <message>
        <source>Keep</source>
        <translation>保留</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
</context>
<context>
    <name>Cover</name>
    <message>
        <source>Cover</source>
        <translation>封面</translation>
    </message>
</context>
<context>
    <name>EqualizerSheet</name>
    <message>
        <source>Equalizer</source>
        <translation>均衡器</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Against cabin noise</source>
        <translation>抵消机舱噪音</translation>
    </message>
    <message>
        <source>More bass</source>
        <translation>增强低音</translation>
    </message>
    <message>
        <source>More treble</source>
        <translation>增强高音</translation>
    </message>
    <message>
        <source>Louder voices</source>
        <translation>增强人声</translation>
    </message>
    <message>
        <source>Less bass</source>
        <translation>减弱低音</translation>
    </message>
    <message>
        <source>Less treble</source>
        <translation>减弱高音</translation>
    </message>
    <message>
        <source>Softer voices</source>
        <translation>减弱人声</translation>
    </message>
    <message>
        <source>Acoustic</source>
        <translation>原声</translation>
    </message>
    <message>
        <source>Dance</source>
        <translation>舞曲</translation>
    </message>
    <message>
        <source>Electronic</source>
        <translation>电子</translation>
    </message>
    <message>
        <source>Hip hop</source>
        <translation>嘻哈</translation>
    </message>
    <message>
        <source>Jazz</source>
        <translation>爵士</translation>
    </message>
    <message>
        <source>Lounge</source>
        <translation>沙发音乐</translation>
    </message>
    <message>
        <source>Piano</source>
        <translation>钢琴</translation>
    </message>
    <message>
        <source>Rhythm and blues</source>
        <translation>节奏布鲁斯</translation>
    </message>
    <message>
        <source>Rock</source>
        <translation>摇滚</translation>
    </message>
    <message>
        <source>Spoken word</source>
        <translation>语音</translation>
    </message>
</context>
<context>
    <name>ErrorWords</name>
    <message>
        <source>The player failed unexpectedly.</source>
        <translation>播放器意外出错。</translation>
    </message>
    <message>
        <source>This value cannot be used.</source>
        <translation>无法使用此值。</translation>
    </message>
    <message>
        <source>This is not possible at the moment.</source>
        <translation>目前无法执行此操作。</translation>
    </message>
    <message>
        <source>This value is not supported here.</source>
        <translation>此处不支持该值。</translation>
    </message>
    <message>
        <source>This kind of media cannot be played.</source>
        <translation>无法播放此类媒体。</translation>
    </message>
    <message>
        <source>The medium does not allow this.</source>
        <translation>该媒体不允许此操作。</translation>
    </message>
    <message>
        <source>The medium could not be read.</source>
        <translation>无法读取媒体。</translation>
    </message>
    <message>
        <source>The recording could not be written.</source>
        <translation>无法写入录音。</translation>
    </message>
    <message>
        <source>The medium was not found or does not answer.</source>
        <translation>找不到媒体或媒体没有响应。</translation>
    </message>
    <message>
        <source>The medium is damaged.</source>
        <translation>媒体已损坏。</translation>
    </message>
    <message>
        <source>The output cannot be used.</source>
        <translation>无法使用该输出。</translation>
    </message>
    <message>
        <source>There is not enough memory.</source>
        <translation>内存不足。</translation>
    </message>
    <message>
        <source>Something that is needed is missing or in use.</source>
        <translation>所需的资源缺失或正被占用。</translation>
    </message>
    <message>
        <source>This is not permitted.</source>
        <translation>不允许此操作。</translation>
    </message>
    <message>
        <source>The player refused this.</source>
        <translation>播放器拒绝了此操作。</translation>
    </message>
    <message>
        <source>An unknown error happened (%1).</source>
        <translation>发生未知错误（%1）。</translation>
    </message>
    <message>
        <source>There is no such file.</source>
        <translation>没有这个文件。</translation>
    </message>
    <message>
        <source>This is a folder, not a medium.</source>
        <translation>这是文件夹，不是媒体。</translation>
    </message>
    <message>
        <source>You may not read this file.</source>
        <translation>您无权读取此文件。</translation>
    </message>
    <message>
        <source>The file is empty.</source>
        <translation>文件是空的。</translation>
    </message>
    <message>
        <source>There is no microphone, or the sound server does not answer.</source>
        <translation>没有麦克风，或声音服务器没有响应。</translation>
    </message>
    <message>
        <source>The name of a recording ends in .wav, .ogg, .opus, .flac, .mp3, .m4a or .amr.</source>
        <translation>录音的名称以 .wav、.ogg、.opus、.flac、.mp3、.m4a 或 .amr 结尾。</translation>
    </message>
    <message>
        <source>There is no such folder.</source>
        <translation>没有此文件夹。</translation>
    </message>
    <message>
        <source>You may not write in this folder.</source>
        <translation>您无权在此文件夹中写入。</translation>
    </message>
    <message>
        <source>The disk is full.</source>
        <translation>磁盘已满。</translation>
    </message>
    <message>
        <source>The sound server does not answer, or what this file leads to is missing.</source>
        <translation>声音服务器没有响应，或此文件指向的内容不存在。</translation>
    </message>
</context>
<context>
    <name>Files</name>
    <message>
        <source>A name is missing.</source>
        <translation>缺少名称。</translation>
    </message>
    <message>
        <source>A name has no slash and begins with no dot.</source>
        <translation>名称不能包含斜杠，也不能以点开头。</translation>
    </message>
    <message>
        <source>There is already “%1”.</source>
        <translation>“%1”已存在。</translation>
    </message>
    <message>
        <source>It cannot be renamed: %1.</source>
        <translation>无法重命名：%1。</translation>
    </message>
    <message>
        <source>It cannot be deleted: %1.</source>
        <translation>无法删除：%1。</translation>
    </message>
    <message>
        <source>%1 (cut short)</source>
        <translation>%1（未录完）</translation>
    </message>
    <message>
        <source>The playlist cannot be written: %1.</source>
        <translation>无法写入播放列表：%1。</translation>
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
        <translation>%1 分钟</translation>
    </message>
    <message>
        <source>%1 hours</source>
        <translation>%1 小时</translation>
    </message>
    <message>
        <source>%1 days</source>
        <translation>%1 天</translation>
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
        <translation>退出全屏</translation>
    </message>
</context>
<context>
    <name>KeySheet</name>
    <message>
        <source>Quit</source>
        <translation>退出</translation>
    </message>
    <message>
        <source>Show this list</source>
        <translation>显示此列表</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>按键</translation>
    </message>
</context>
<context>
    <name>LevelMeter</name>
    <message>
        <source>Level</source>
        <translation>电平</translation>
    </message>
    <message>
        <source>%1 percent</source>
        <translation>百分之 %1</translation>
    </message>
    <message>
        <source>Too loud</source>
        <translation>声音过大</translation>
    </message>
    <message>
        <source>Nothing is heard</source>
        <translation>没有声音</translation>
    </message>
</context>
<context>
    <name>LibraryLine</name>
    <message>
        <source>Playlist</source>
        <translation>播放列表</translation>
    </message>
    <message>
        <source>Delete “%1”</source>
        <translation>删除“%1”</translation>
    </message>
    <message>
        <source>Add “%1”</source>
        <translation>添加“%1”</translation>
    </message>
</context>
<context>
    <name>LibraryPage</name>
    <message>
        <source>Folder above</source>
        <translation>上级文件夹</translation>
    </message>
    <message>
        <source>Play all</source>
        <translation>全部播放</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>搜索</translation>
    </message>
    <message>
        <source>Order</source>
        <translation>排序</translation>
    </message>
    <message>
        <source>Title, artist or album</source>
        <translation>标题、艺术家或专辑</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>媒体库</translation>
    </message>
    <message>
        <source>Nothing to play in this folder</source>
        <translation>此文件夹中没有可播放的内容</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <translation>未找到</translation>
    </message>
    <message>
        <source>Names of files, titles, artists and albums are searched, in this folder and below it.</source>
        <translation>在此文件夹及其子文件夹中搜索文件名、标题、艺术家和专辑。</translation>
    </message>
    <message>
        <source>By folder</source>
        <translation>按文件夹</translation>
    </message>
    <message>
        <source>By title</source>
        <translation>按标题</translation>
    </message>
    <message>
        <source>By artist</source>
        <translation>按艺术家</translation>
    </message>
    <message>
        <source>By album</source>
        <translation>按专辑</translation>
    </message>
    <message>
        <source>Delete the playlist?</source>
        <translation>删除播放列表？</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Voro Player</source>
        <translation>Voro 播放器</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>空格键</translation>
    </message>
    <message>
        <source>Play or pause</source>
        <translation>播放或暂停</translation>
    </message>
    <message>
        <source>10 seconds back or on</source>
        <translation>后退或前进 10 秒</translation>
    </message>
    <message>
        <source>Louder or softer, beside the library</source>
        <translation>增大或减小音量（媒体库之外）</translation>
    </message>
    <message>
        <source>Louder or softer</source>
        <translation>增大或减小音量</translation>
    </message>
    <message>
        <source>Sound off or on</source>
        <translation>静音或取消静音</translation>
    </message>
    <message>
        <source>Next or previous track</source>
        <translation>下一首或上一首</translation>
    </message>
    <message>
        <source>Slower or faster</source>
        <translation>减速或加速</translation>
    </message>
    <message>
        <source>Queue</source>
        <translation>播放队列</translation>
    </message>
    <message>
        <source>Repeat</source>
        <translation>重复</translation>
    </message>
    <message>
        <source>Mix the order</source>
        <translation>随机顺序</translation>
    </message>
    <message>
        <source>Captions on or off</source>
        <translation>开启或关闭字幕</translation>
    </message>
    <message>
        <source>Full screen</source>
        <translation>全屏</translation>
    </message>
    <message>
        <source>Go on where it stopped last time</source>
        <translation>从上次停止处继续</translation>
    </message>
    <message>
        <source>Open files</source>
        <translation>打开文件</translation>
    </message>
    <message>
        <source>Open an address</source>
        <translation>打开网址</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>搜索</translation>
    </message>
    <message>
        <source>Escape</source>
        <translation>Esc</translation>
    </message>
    <message>
        <source>Back, or to the folder above</source>
        <translation>返回，或到上级文件夹</translation>
    </message>
    <message>
        <source>Open files…</source>
        <translation>打开文件…</translation>
    </message>
    <message>
        <source>Open an address…</source>
        <translation>打开网址…</translation>
    </message>
    <message>
        <source>Sleep timer</source>
        <translation>睡眠定时</translation>
    </message>
    <message>
        <source>Sleep timer: on</source>
        <translation>睡眠定时：开</translation>
    </message>
    <message>
        <source>Record, hold or go on</source>
        <translation>录音、暂停或继续</translation>
    </message>
    <message>
        <source>Enter</source>
        <translation>回车键</translation>
    </message>
    <message>
        <source>Finish the recording, or play one of the list</source>
        <translation>结束录音，或播放列表中的录音</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Delete a recording of the list</source>
        <translation>删除列表中的录音</translation>
    </message>
    <message>
        <source>Rename a recording of the list</source>
        <translation>重命名列表中的录音</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>格式</translation>
    </message>
    <message>
        <source>Show the folder</source>
        <translation>显示文件夹</translation>
    </message>
    <message>
        <source>Recording %1</source>
        <translation>正在录音 %1</translation>
    </message>
    <message>
        <source>Voro Recorder</source>
        <translation>Voro 录音机</translation>
    </message>
    <message>
        <source>Voro Remote</source>
        <translation>Voro 遥控器</translation>
    </message>
    <message>
        <source>Back or on</source>
        <translation>后退或前进</translation>
    </message>
    <message>
        <source>The device does not answer.</source>
        <translation>设备没有响应。</translation>
    </message>
    <message>
        <source>Nothing is playing</source>
        <translation>没有正在播放的内容</translation>
    </message>
    <message>
        <source>What plays on this device shows up here.</source>
        <translation>此设备上播放的内容会显示在这里。</translation>
    </message>
    <message>
        <source>Played by %1</source>
        <translation>由 %1 播放</translation>
    </message>
    <message>
        <source>Plays in a random order</source>
        <translation>随机播放</translation>
    </message>
    <message>
        <source>Plays in order</source>
        <translation>顺序播放</translation>
    </message>
    <message>
        <source>Previous track</source>
        <translation>上一首</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>暂停</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>播放</translation>
    </message>
    <message>
        <source>Next track</source>
        <translation>下一首</translation>
    </message>
    <message>
        <source>Repeats the track</source>
        <translation>单曲循环</translation>
    </message>
    <message>
        <source>Repeats everything</source>
        <translation>全部循环</translation>
    </message>
    <message>
        <source>Repeats nothing</source>
        <translation>不循环</translation>
    </message>
    <message>
        <source>Softer</source>
        <translation>减小音量</translation>
    </message>
    <message>
        <source>Sound on</source>
        <translation>取消静音</translation>
    </message>
    <message>
        <source>Sound off</source>
        <translation>静音</translation>
    </message>
    <message>
        <source>Louder</source>
        <translation>增大音量</translation>
    </message>
    <message>
        <source>Sources</source>
        <translation>来源</translation>
    </message>
    <message>
        <source>There is nothing in it that can be played.</source>
        <translation>其中没有可以播放的内容。</translation>
    </message>
</context>
<context>
    <name>MiniBar</name>
    <message>
        <source>Now playing: %1</source>
        <translation>正在播放：%1</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>暂停</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>播放</translation>
    </message>
</context>
<context>
    <name>NameDialog</name>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
</context>
<context>
    <name>Notice</name>
    <message>
        <source>Close the message</source>
        <translation>关闭消息</translation>
    </message>
</context>
<context>
    <name>Opening</name>
    <message>
        <source>Open files</source>
        <translation>打开文件</translation>
    </message>
    <message>
        <source>Open an address</source>
        <translation>打开网址</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>播放</translation>
    </message>
    <message>
        <source>This is no address. One begins with http:// or https://, for example.</source>
        <translation>这不是网址。网址以 http:// 或 https:// 等开头。</translation>
    </message>
</context>
<context>
    <name>Picture</name>
    <message>
        <source>Film</source>
        <translation>影片</translation>
    </message>
</context>
<context>
    <name>Playback</name>
    <message>
        <source>“%1”: %2</source>
        <translation>“%1”：%2</translation>
    </message>
    <message>
        <source>“%1” cannot be played.</source>
        <translation>无法播放“%1”。</translation>
    </message>
    <message>
        <source>The captions “%1” cannot be read.</source>
        <translation>无法读取字幕“%1”。</translation>
    </message>
</context>
<context>
    <name>PlayerPage</name>
    <message>
        <source>Library</source>
        <translation>媒体库</translation>
    </message>
    <message>
        <source>Full screen</source>
        <translation>全屏</translation>
    </message>
    <message>
        <source>Captions</source>
        <translation>字幕</translation>
    </message>
    <message>
        <source>Speed: %1×</source>
        <translation>速度：%1×</translation>
    </message>
    <message>
        <source>Equalizer</source>
        <translation>均衡器</translation>
    </message>
    <message>
        <source>Nothing is played</source>
        <translation>没有播放内容</translation>
    </message>
    <message>
        <source>Go on at %1</source>
        <translation>从 %1 继续</translation>
    </message>
    <message>
        <source>Sound on</source>
        <translation>取消静音</translation>
    </message>
    <message>
        <source>Sound off</source>
        <translation>静音</translation>
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
        <translation>位置</translation>
    </message>
</context>
<context>
    <name>QueueSheet</name>
    <message>
        <source>Queue</source>
        <translation>播放队列</translation>
    </message>
    <message>
        <source>Track %1</source>
        <translation>曲目 %1</translation>
    </message>
    <message>
        <source>Take “%1” out</source>
        <translation>移除“%1”</translation>
    </message>
    <message>
        <source>Move “%1”</source>
        <translation>移动“%1”</translation>
    </message>
</context>
<context>
    <name>RecordPanel</name>
    <message>
        <source>Ogg Opus: small</source>
        <translation>Ogg Opus：体积小</translation>
    </message>
    <message>
        <source>Ogg Vorbis: small</source>
        <translation>Ogg Vorbis：体积小</translation>
    </message>
    <message>
        <source>MP3: plays anywhere</source>
        <translation>MP3：随处可播放</translation>
    </message>
    <message>
        <source>AAC: small, plays on phones</source>
        <translation>AAC：体积小，适合手机</translation>
    </message>
    <message>
        <source>AMR: speech only, tiny</source>
        <translation>AMR：仅语音，极小</translation>
    </message>
    <message>
        <source>FLAC: without loss</source>
        <translation>FLAC：无损</translation>
    </message>
    <message>
        <source>WAV: as it is</source>
        <translation>WAV：原样</translation>
    </message>
    <message>
        <source>As the microphone has them</source>
        <translation>与麦克风一致</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>自动</translation>
    </message>
    <message>
        <source>Mono</source>
        <translation>单声道</translation>
    </message>
    <message>
        <source>Stereo</source>
        <translation>立体声</translation>
    </message>
    <message>
        <source>The recording has ended: %1 What was recorded is in the list.</source>
        <translation>录音已结束：%1 已录制的内容在列表中。</translation>
    </message>
    <message>
        <source>Recorded: %1</source>
        <translation>已录制：%1</translation>
    </message>
    <message>
        <source>%1 free, enough for %2</source>
        <translation>可用 %1，足够录制 %2</translation>
    </message>
    <message>
        <source>Format: %1</source>
        <translation>格式：%1</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>暂停</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>继续</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>录音</translation>
    </message>
    <message>
        <source>Channels: %1</source>
        <translation>声道：%1</translation>
    </message>
    <message>
        <source>Finish</source>
        <translation>完成</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>格式</translation>
    </message>
    <message>
        <source>Channels</source>
        <translation>声道</translation>
    </message>
</context>
<context>
    <name>RecordingLine</name>
    <message>
        <source>Rename “%1”</source>
        <translation>重命名“%1”</translation>
    </message>
    <message>
        <source>Delete “%1”</source>
        <translation>删除“%1”</translation>
    </message>
</context>
<context>
    <name>RecordingList</name>
    <message>
        <source>There is no program that shows folders. The recordings are in %1.</source>
        <translation>没有可显示文件夹的程序。录音位于 %1。</translation>
    </message>
    <message>
        <source>Recordings</source>
        <translation>录音</translation>
    </message>
    <message>
        <source>Show the folder</source>
        <translation>显示文件夹</translation>
    </message>
    <message>
        <source>No recordings yet</source>
        <translation>尚无录音</translation>
    </message>
    <message>
        <source>The red button starts the first one.</source>
        <translation>按红色按钮开始第一段录音。</translation>
    </message>
    <message>
        <source>Rename the recording</source>
        <translation>重命名录音</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>重命名</translation>
    </message>
    <message>
        <source>Delete the recording?</source>
        <translation>删除录音？</translation>
    </message>
</context>
<context>
    <name>Role</name>
    <message>
        <source>Voro Player</source>
        <translation>Voro 播放器</translation>
    </message>
</context>
<context>
    <name>Sheet</name>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
</context>
<context>
    <name>SleepSheet</name>
    <message>
        <source>Sleep timer</source>
        <translation>睡眠定时</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>At the end of the track</source>
        <translation>当前曲目结束时</translation>
    </message>
    <message>
        <source>In %1 minutes</source>
        <translation>%1 分钟后</translation>
    </message>
</context>
<context>
    <name>SourceSheet</name>
    <message>
        <source>Sources</source>
        <translation>来源</translation>
    </message>
    <message>
        <source>Show “%1”</source>
        <translation>显示“%1”</translation>
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
        <translation>继续播放“%1”</translation>
    </message>
    <message>
        <source>Open files…</source>
        <translation>打开文件…</translation>
    </message>
    <message>
        <source>Open an address…</source>
        <translation>打开网址…</translation>
    </message>
    <message>
        <source>Play the sample</source>
        <translation>播放示例</translation>
    </message>
</context>
<context>
    <name>Transport</name>
    <message>
        <source>Position</source>
        <translation>位置</translation>
    </message>
    <message>
        <source>Repeats the track</source>
        <translation>单曲循环</translation>
    </message>
    <message>
        <source>Repeats everything</source>
        <translation>全部循环</translation>
    </message>
    <message>
        <source>Repeats nothing</source>
        <translation>不循环</translation>
    </message>
    <message>
        <source>Plays in a mixed order</source>
        <translation>乱序播放</translation>
    </message>
    <message>
        <source>Plays in order</source>
        <translation>顺序播放</translation>
    </message>
    <message>
        <source>Previous track</source>
        <translation>上一首</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>暂停</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>播放</translation>
    </message>
    <message>
        <source>Next track</source>
        <translation>下一首</translation>
    </message>
    <message>
        <source>Queue</source>
        <translation>播放队列</translation>
    </message>
</context>
</TS>

<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar">
<context>
    <name>AboutSheet</name>
    <message>
        <source>Version %1</source>
        <translation>الإصدار %1</translation>
    </message>
    <message>
        <source>An application on libvoromultimedia. Free software under the Apache License 2.0.</source>
        <translation>تطبيق مبني على libvoromultimedia. برنامج حر برخصة أباتشي 2.0.</translation>
    </message>
</context>
<context>
    <name>AddSheet</name>
    <message>
        <source>Add</source>
        <translation>إضافة</translation>
    </message>
    <message>
        <source>Play next</source>
        <translation>تشغيل تاليًا</translation>
    </message>
    <message>
        <source>Play at the end of the queue</source>
        <translation>تشغيل في نهاية القائمة</translation>
    </message>
    <message>
        <source>New playlist…</source>
        <translation>قائمة تشغيل جديدة…</translation>
    </message>
    <message>
        <source>New playlist</source>
        <translation>قائمة تشغيل جديدة</translation>
    </message>
    <message>
        <source>My playlist</source>
        <translation>قائمتي</translation>
    </message>
</context>
<context>
    <name>AppMenu</name>
    <message>
        <source>More</source>
        <translation>المزيد</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>المظهر</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>المفاتيح</translation>
    </message>
    <message>
        <source>About</source>
        <translation>حول</translation>
    </message>
</context>
<context>
    <name>AppearanceSheet</name>
    <message>
        <source>As the system</source>
        <translation>مثل النظام</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>فاتح</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>داكن</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>المظهر</translation>
    </message>
    <message>
        <source>High contrast</source>
        <translation>تباين عالٍ</translation>
    </message>
    <message>
        <source>Size of texts: %1 %</source>
        <translation>حجم النص: %1 %</translation>
    </message>
    <message>
        <source>Size of texts</source>
        <translation>حجم النص</translation>
    </message>
</context>
<context>
    <name>CaptionSheet</name>
    <message>
        <source>Captions</source>
        <translation>الترجمة النصية</translation>
    </message>
    <message>
        <source>Show captions</source>
        <translation>إظهار الترجمة</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Captions %1</source>
        <translation>الترجمة النصية %1</translation>
    </message>
    <message>
        <source>This film has no captions.</source>
        <translation>لا توجد ترجمة نصية لهذا الفيلم.</translation>
    </message>
</context>
<context>
    <name>ConfirmSheet</name>
    <message>
        <source>“%1” cannot be brought back.</source>
        <translation>لا يمكن استرجاع «%1».</translation>
    </message>
    <message>
        <source>Keep</source>
        <translation>إبقاء</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>حذف</translation>
    </message>
</context>
<context>
    <name>Cover</name>
    <message>
        <source>Cover</source>
        <translation>الغلاف</translation>
    </message>
</context>
<context>
    <name>EqualizerSheet</name>
    <message>
        <source>Equalizer</source>
        <translation>المعادل الصوتي</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>إيقاف</translation>
    </message>
    <message>
        <source>Against cabin noise</source>
        <translation>ضد ضجيج المقصورة</translation>
    </message>
    <message>
        <source>More bass</source>
        <translation>جهير أقوى</translation>
    </message>
    <message>
        <source>More treble</source>
        <translation>حدة أقوى</translation>
    </message>
    <message>
        <source>Louder voices</source>
        <translation>أصوات أعلى</translation>
    </message>
    <message>
        <source>Less bass</source>
        <translation>جهير أضعف</translation>
    </message>
    <message>
        <source>Less treble</source>
        <translation>حدة أضعف</translation>
    </message>
    <message>
        <source>Softer voices</source>
        <translation>أصوات أخفض</translation>
    </message>
    <message>
        <source>Acoustic</source>
        <translation>صوتي طبيعي</translation>
    </message>
    <message>
        <source>Dance</source>
        <translation>رقص</translation>
    </message>
    <message>
        <source>Electronic</source>
        <translation>إلكتروني</translation>
    </message>
    <message>
        <source>Hip hop</source>
        <translation>هيب هوب</translation>
    </message>
    <message>
        <source>Jazz</source>
        <translation>جاز</translation>
    </message>
    <message>
        <source>Lounge</source>
        <translation>لاونج</translation>
    </message>
    <message>
        <source>Piano</source>
        <translation>بيانو</translation>
    </message>
    <message>
        <source>Rhythm and blues</source>
        <translation>ريذم أند بلوز</translation>
    </message>
    <message>
        <source>Rock</source>
        <translation>روك</translation>
    </message>
    <message>
        <source>Spoken word</source>
        <translation>كلام منطوق</translation>
    </message>
</context>
<context>
    <name>ErrorWords</name>
    <message>
        <source>The player failed unexpectedly.</source>
        <translation>تعطل المشغل على غير توقع.</translation>
    </message>
    <message>
        <source>This value cannot be used.</source>
        <translation>لا يمكن استخدام هذه القيمة.</translation>
    </message>
    <message>
        <source>This is not possible at the moment.</source>
        <translation>هذا غير ممكن الآن.</translation>
    </message>
    <message>
        <source>This value is not supported here.</source>
        <translation>هذه القيمة غير مدعومة هنا.</translation>
    </message>
    <message>
        <source>This kind of media cannot be played.</source>
        <translation>لا يمكن تشغيل هذا النوع من الوسائط.</translation>
    </message>
    <message>
        <source>The medium does not allow this.</source>
        <translation>الوسيط لا يسمح بذلك.</translation>
    </message>
    <message>
        <source>The medium could not be read.</source>
        <translation>تعذرت قراءة الوسيط.</translation>
    </message>
    <message>
        <source>The recording could not be written.</source>
        <translation>تعذرت كتابة التسجيل.</translation>
    </message>
    <message>
        <source>The medium was not found or does not answer.</source>
        <translation>لم يُعثر على الوسيط أو أنه لا يستجيب.</translation>
    </message>
    <message>
        <source>The medium is damaged.</source>
        <translation>الوسيط تالف.</translation>
    </message>
    <message>
        <source>The output cannot be used.</source>
        <translation>لا يمكن استخدام المخرج.</translation>
    </message>
    <message>
        <source>There is not enough memory.</source>
        <translation>الذاكرة غير كافية.</translation>
    </message>
    <message>
        <source>Something that is needed is missing or in use.</source>
        <translation>شيء لازم مفقود أو قيد الاستخدام.</translation>
    </message>
    <message>
        <source>This is not permitted.</source>
        <translation>هذا غير مسموح.</translation>
    </message>
    <message>
        <source>The player refused this.</source>
        <translation>رفض المشغل ذلك.</translation>
    </message>
    <message>
        <source>An unknown error happened (%1).</source>
        <translation>حدث خطأ غير معروف (%1).</translation>
    </message>
    <message>
        <source>There is no such file.</source>
        <translation>لا يوجد ملف كهذا.</translation>
    </message>
    <message>
        <source>This is a folder, not a medium.</source>
        <translation>هذا مجلد وليس وسيطًا.</translation>
    </message>
    <message>
        <source>You may not read this file.</source>
        <translation>لا يحق لك قراءة هذا الملف.</translation>
    </message>
    <message>
        <source>The file is empty.</source>
        <translation>الملف فارغ.</translation>
    </message>
    <message>
        <source>There is no microphone, or the sound server does not answer.</source>
        <translation>لا يوجد ميكروفون، أو خادم الصوت لا يستجيب.</translation>
    </message>
    <message>
        <source>The name of a recording ends in .wav, .ogg, .opus, .flac, .mp3, .m4a or .amr.</source>
        <translation>ينتهي اسم التسجيل بـ ‎.wav أو ‎.ogg أو ‎.opus أو ‎.flac أو ‎.mp3 أو ‎.m4a أو ‎.amr.</translation>
    </message>
    <message>
        <source>There is no such folder.</source>
        <translation>لا يوجد مجلد كهذا.</translation>
    </message>
    <message>
        <source>You may not write in this folder.</source>
        <translation>لا يُسمح لك بالكتابة في هذا المجلد.</translation>
    </message>
    <message>
        <source>The disk is full.</source>
        <translation>القرص ممتلئ.</translation>
    </message>
    <message>
        <source>The sound server does not answer, or what this file leads to is missing.</source>
        <translation>خادم الصوت لا يستجيب، أو أن ما يشير إليه هذا الملف مفقود.</translation>
    </message>
</context>
<context>
    <name>Files</name>
    <message>
        <source>A name is missing.</source>
        <translation>الاسم مفقود.</translation>
    </message>
    <message>
        <source>A name has no slash and begins with no dot.</source>
        <translation>لا يحتوي الاسم على شرطة مائلة ولا يبدأ بنقطة.</translation>
    </message>
    <message>
        <source>There is already “%1”.</source>
        <translation>‏«%1» موجود بالفعل.</translation>
    </message>
    <message>
        <source>It cannot be renamed: %1.</source>
        <translation>تتعذر إعادة التسمية: %1.</translation>
    </message>
    <message>
        <source>It cannot be deleted: %1.</source>
        <translation>يتعذر الحذف: %1.</translation>
    </message>
    <message>
        <source>%1 (cut short)</source>
        <translation>%1 (مقطوع)</translation>
    </message>
    <message>
        <source>The playlist cannot be written: %1.</source>
        <translation>تتعذر كتابة قائمة التشغيل: %1.</translation>
    </message>
</context>
<context>
    <name>Format</name>
    <message>
        <source>%1 B</source>
        <translation>%1 بايت</translation>
    </message>
    <message>
        <source>%1 kB</source>
        <translation>%1 ك.ب</translation>
    </message>
    <message>
        <source>%1 GB</source>
        <translation>%1 ج.ب</translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation>%1 م.ب</translation>
    </message>
    <message>
        <source>%1 minutes</source>
        <translation>%1 دقيقة</translation>
    </message>
    <message>
        <source>%1 hours</source>
        <translation>%1 ساعة</translation>
    </message>
    <message>
        <source>%1 days</source>
        <translation>%1 يوم</translation>
    </message>
    <message>
        <source>%1 seconds</source>
        <translation>%1 ثانية</translation>
    </message>
</context>
<context>
    <name>FullScreen</name>
    <message>
        <source>Leave full screen</source>
        <translation>مغادرة ملء الشاشة</translation>
    </message>
</context>
<context>
    <name>KeySheet</name>
    <message>
        <source>Quit</source>
        <translation>إنهاء</translation>
    </message>
    <message>
        <source>Show this list</source>
        <translation>إظهار هذه القائمة</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>المفاتيح</translation>
    </message>
</context>
<context>
    <name>LevelMeter</name>
    <message>
        <source>Level</source>
        <translation>المستوى</translation>
    </message>
    <message>
        <source>%1 percent</source>
        <translation>%1 بالمئة</translation>
    </message>
    <message>
        <source>Too loud</source>
        <translation>مرتفع جدًا</translation>
    </message>
    <message>
        <source>Nothing is heard</source>
        <translation>لا يُسمع شيء</translation>
    </message>
</context>
<context>
    <name>LibraryLine</name>
    <message>
        <source>Playlist</source>
        <translation>قائمة تشغيل</translation>
    </message>
    <message>
        <source>Delete “%1”</source>
        <translation>حذف «%1»</translation>
    </message>
    <message>
        <source>Add “%1”</source>
        <translation>إضافة «%1»</translation>
    </message>
</context>
<context>
    <name>LibraryPage</name>
    <message>
        <source>Folder above</source>
        <translation>المجلد الأعلى</translation>
    </message>
    <message>
        <source>Play all</source>
        <translation>تشغيل الكل</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>بحث</translation>
    </message>
    <message>
        <source>Order</source>
        <translation>الترتيب</translation>
    </message>
    <message>
        <source>Title, artist or album</source>
        <translation>العنوان أو الفنان أو الألبوم</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>المكتبة</translation>
    </message>
    <message>
        <source>Nothing to play in this folder</source>
        <translation>لا شيء للتشغيل في هذا المجلد</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <translation>لم يُعثر على شيء</translation>
    </message>
    <message>
        <source>Names of files, titles, artists and albums are searched, in this folder and below it.</source>
        <translation>يشمل البحث أسماء الملفات والعناوين والفنانين والألبومات في هذا المجلد وما تحته.</translation>
    </message>
    <message>
        <source>By folder</source>
        <translation>حسب المجلد</translation>
    </message>
    <message>
        <source>By title</source>
        <translation>حسب العنوان</translation>
    </message>
    <message>
        <source>By artist</source>
        <translation>حسب الفنان</translation>
    </message>
    <message>
        <source>By album</source>
        <translation>حسب الألبوم</translation>
    </message>
    <message>
        <source>Delete the playlist?</source>
        <translation>حذف قائمة التشغيل؟</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Voro Player</source>
        <translation>مشغل Voro</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>المسافة</translation>
    </message>
    <message>
        <source>Play or pause</source>
        <translation>تشغيل أو إيقاف مؤقت</translation>
    </message>
    <message>
        <source>10 seconds back or on</source>
        <translation>10 ثوانٍ للخلف أو للأمام</translation>
    </message>
    <message>
        <source>Louder or softer, beside the library</source>
        <translation>رفع الصوت أو خفضه، خارج المكتبة</translation>
    </message>
    <message>
        <source>Louder or softer</source>
        <translation>رفع الصوت أو خفضه</translation>
    </message>
    <message>
        <source>Sound off or on</source>
        <translation>كتم الصوت أو تشغيله</translation>
    </message>
    <message>
        <source>Next or previous track</source>
        <translation>المقطع التالي أو السابق</translation>
    </message>
    <message>
        <source>Slower or faster</source>
        <translation>أبطأ أو أسرع</translation>
    </message>
    <message>
        <source>Queue</source>
        <translation>قائمة الانتظار</translation>
    </message>
    <message>
        <source>Repeat</source>
        <translation>تكرار</translation>
    </message>
    <message>
        <source>Mix the order</source>
        <translation>خلط الترتيب</translation>
    </message>
    <message>
        <source>Captions on or off</source>
        <translation>إظهار الترجمة أو إخفاؤها</translation>
    </message>
    <message>
        <source>Full screen</source>
        <translation>ملء الشاشة</translation>
    </message>
    <message>
        <source>Go on where it stopped last time</source>
        <translation>المتابعة من حيث توقف</translation>
    </message>
    <message>
        <source>Open files</source>
        <translation>فتح ملفات</translation>
    </message>
    <message>
        <source>Open an address</source>
        <translation>فتح عنوان</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>بحث</translation>
    </message>
    <message>
        <source>Escape</source>
        <translation>Escape</translation>
    </message>
    <message>
        <source>Back, or to the folder above</source>
        <translation>رجوع، أو إلى المجلد الأعلى</translation>
    </message>
    <message>
        <source>Open files…</source>
        <translation>فتح ملفات…</translation>
    </message>
    <message>
        <source>Open an address…</source>
        <translation>فتح عنوان…</translation>
    </message>
    <message>
        <source>Sleep timer</source>
        <translation>مؤقت النوم</translation>
    </message>
    <message>
        <source>Sleep timer: on</source>
        <translation>مؤقت النوم: يعمل</translation>
    </message>
    <message>
        <source>Record, hold or go on</source>
        <translation>تسجيل أو إيقاف مؤقت أو متابعة</translation>
    </message>
    <message>
        <source>Enter</source>
        <translation>الإدخال</translation>
    </message>
    <message>
        <source>Finish the recording, or play one of the list</source>
        <translation>إنهاء التسجيل، أو تشغيل واحد من القائمة</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>حذف</translation>
    </message>
    <message>
        <source>Delete a recording of the list</source>
        <translation>حذف تسجيل من القائمة</translation>
    </message>
    <message>
        <source>Rename a recording of the list</source>
        <translation>إعادة تسمية تسجيل من القائمة</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>الصيغة</translation>
    </message>
    <message>
        <source>Show the folder</source>
        <translation>إظهار المجلد</translation>
    </message>
    <message>
        <source>Recording %1</source>
        <translation>جارٍ التسجيل %1</translation>
    </message>
    <message>
        <source>Voro Recorder</source>
        <translation>مسجل Voro</translation>
    </message>
    <message>
        <source>Voro Remote</source>
        <translation>متحكم Voro</translation>
    </message>
    <message>
        <source>Back or on</source>
        <translation>للخلف أو للأمام</translation>
    </message>
    <message>
        <source>The device does not answer.</source>
        <translation>الجهاز لا يستجيب.</translation>
    </message>
    <message>
        <source>Nothing is playing</source>
        <translation>لا شيء قيد التشغيل</translation>
    </message>
    <message>
        <source>What plays on this device shows up here.</source>
        <translation>ما يعمل على هذا الجهاز يظهر هنا.</translation>
    </message>
    <message>
        <source>Played by %1</source>
        <translation>يشغله %1</translation>
    </message>
    <message>
        <source>Plays in a random order</source>
        <translation>تشغيل عشوائي</translation>
    </message>
    <message>
        <source>Plays in order</source>
        <translation>تشغيل بالترتيب</translation>
    </message>
    <message>
        <source>Previous track</source>
        <translation>المقطع السابق</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>إيقاف مؤقت</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>تشغيل</translation>
    </message>
    <message>
        <source>Next track</source>
        <translation>المقطع التالي</translation>
    </message>
    <message>
        <source>Repeats the track</source>
        <translation>يكرر المقطع</translation>
    </message>
    <message>
        <source>Repeats everything</source>
        <translation>يكرر الكل</translation>
    </message>
    <message>
        <source>Repeats nothing</source>
        <translation>لا يكرر شيئًا</translation>
    </message>
    <message>
        <source>Softer</source>
        <translation>أخفض</translation>
    </message>
    <message>
        <source>Sound on</source>
        <translation>تشغيل الصوت</translation>
    </message>
    <message>
        <source>Sound off</source>
        <translation>كتم الصوت</translation>
    </message>
    <message>
        <source>Louder</source>
        <translation>أعلى</translation>
    </message>
    <message>
        <source>Sources</source>
        <translation>المصادر</translation>
    </message>
    <message>
        <source>There is nothing in it that can be played.</source>
        <translation>ليس فيه شيء يمكن تشغيله.</translation>
    </message>
</context>
<context>
    <name>MiniBar</name>
    <message>
        <source>Now playing: %1</source>
        <translation>يعمل الآن: %1</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>إيقاف مؤقت</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>تشغيل</translation>
    </message>
</context>
<context>
    <name>NameDialog</name>
    <message>
        <source>OK</source>
        <translation>موافق</translation>
    </message>
</context>
<context>
    <name>Notice</name>
    <message>
        <source>Close the message</source>
        <translation>إغلاق الرسالة</translation>
    </message>
</context>
<context>
    <name>Opening</name>
    <message>
        <source>Open files</source>
        <translation>فتح ملفات</translation>
    </message>
    <message>
        <source>Open an address</source>
        <translation>فتح عنوان</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>تشغيل</translation>
    </message>
    <message>
        <source>This is no address. One begins with http:// or https://, for example.</source>
        <translation>هذا ليس عنوانًا. يبدأ العنوان مثلًا بـ http:// أو https://.</translation>
    </message>
</context>
<context>
    <name>Picture</name>
    <message>
        <source>Film</source>
        <translation>فيلم</translation>
    </message>
</context>
<context>
    <name>Playback</name>
    <message>
        <source>“%1”: %2</source>
        <translation>‏«%1»: %2</translation>
    </message>
    <message>
        <source>“%1” cannot be played.</source>
        <translation>يتعذر تشغيل «%1».</translation>
    </message>
    <message>
        <source>The captions “%1” cannot be read.</source>
        <translation>تعذّرت قراءة الترجمة النصية “%1”.</translation>
    </message>
</context>
<context>
    <name>PlayerPage</name>
    <message>
        <source>Library</source>
        <translation>المكتبة</translation>
    </message>
    <message>
        <source>Full screen</source>
        <translation>ملء الشاشة</translation>
    </message>
    <message>
        <source>Captions</source>
        <translation>الترجمة النصية</translation>
    </message>
    <message>
        <source>Speed: %1×</source>
        <translation>السرعة: %1×</translation>
    </message>
    <message>
        <source>Equalizer</source>
        <translation>المعادل الصوتي</translation>
    </message>
    <message>
        <source>Nothing is played</source>
        <translation>لا شيء يُشغَّل</translation>
    </message>
    <message>
        <source>Go on at %1</source>
        <translation>المتابعة من %1</translation>
    </message>
    <message>
        <source>Sound on</source>
        <translation>تشغيل الصوت</translation>
    </message>
    <message>
        <source>Sound off</source>
        <translation>كتم الصوت</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>مستوى الصوت</translation>
    </message>
</context>
<context>
    <name>Progress</name>
    <message>
        <source>Position</source>
        <translation>الموضع</translation>
    </message>
</context>
<context>
    <name>QueueSheet</name>
    <message>
        <source>Queue</source>
        <translation>قائمة الانتظار</translation>
    </message>
    <message>
        <source>Track %1</source>
        <translation>المقطع %1</translation>
    </message>
    <message>
        <source>Take “%1” out</source>
        <translation>إخراج «%1»</translation>
    </message>
    <message>
        <source>Move “%1”</source>
        <translation>نقل «%1»</translation>
    </message>
</context>
<context>
    <name>RecordPanel</name>
    <message>
        <source>Ogg Opus: small</source>
        <translation>‏Ogg Opus: صغير</translation>
    </message>
    <message>
        <source>Ogg Vorbis: small</source>
        <translation>‏Ogg Vorbis: صغير</translation>
    </message>
    <message>
        <source>MP3: plays anywhere</source>
        <translation>‏MP3: يعمل في كل مكان</translation>
    </message>
    <message>
        <source>AAC: small, plays on phones</source>
        <translation>‏AAC: صغير، للهواتف</translation>
    </message>
    <message>
        <source>AMR: speech only, tiny</source>
        <translation>‏AMR: كلام فقط، ضئيل</translation>
    </message>
    <message>
        <source>FLAC: without loss</source>
        <translation>‏FLAC: دون فقد</translation>
    </message>
    <message>
        <source>WAV: as it is</source>
        <translation>‏WAV: كما هو</translation>
    </message>
    <message>
        <source>As the microphone has them</source>
        <translation>كما في الميكروفون</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>تلقائي</translation>
    </message>
    <message>
        <source>Mono</source>
        <translation>أحادي</translation>
    </message>
    <message>
        <source>Stereo</source>
        <translation>مجسم</translation>
    </message>
    <message>
        <source>The recording has ended: %1 What was recorded is in the list.</source>
        <translation>انتهى التسجيل: %1 ما سُجِّل موجود في القائمة.</translation>
    </message>
    <message>
        <source>Recorded: %1</source>
        <translation>المسجل: %1</translation>
    </message>
    <message>
        <source>%1 free, enough for %2</source>
        <translation>%1 متاحة، تكفي %2</translation>
    </message>
    <message>
        <source>Format: %1</source>
        <translation>الصيغة: %1</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>إيقاف مؤقت</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>متابعة</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>تسجيل</translation>
    </message>
    <message>
        <source>Channels: %1</source>
        <translation>القنوات: %1</translation>
    </message>
    <message>
        <source>Finish</source>
        <translation>إنهاء</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>الصيغة</translation>
    </message>
    <message>
        <source>Channels</source>
        <translation>القنوات</translation>
    </message>
</context>
<context>
    <name>RecordingLine</name>
    <message>
        <source>Rename “%1”</source>
        <translation>إعادة تسمية «%1»</translation>
    </message>
    <message>
        <source>Delete “%1”</source>
        <translation>حذف «%1»</translation>
    </message>
</context>
<context>
    <name>RecordingList</name>
    <message>
        <source>There is no program that shows folders. The recordings are in %1.</source>
        <translation>لا يوجد برنامج يعرض المجلدات. التسجيلات في %1.</translation>
    </message>
    <message>
        <source>Recordings</source>
        <translation>التسجيلات</translation>
    </message>
    <message>
        <source>Show the folder</source>
        <translation>إظهار المجلد</translation>
    </message>
    <message>
        <source>No recordings yet</source>
        <translation>لا تسجيلات بعد</translation>
    </message>
    <message>
        <source>The red button starts the first one.</source>
        <translation>الزر الأحمر يبدأ الأول.</translation>
    </message>
    <message>
        <source>Rename the recording</source>
        <translation>إعادة تسمية التسجيل</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>تسمية</translation>
    </message>
    <message>
        <source>Delete the recording?</source>
        <translation>حذف التسجيل؟</translation>
    </message>
</context>
<context>
    <name>Role</name>
    <message>
        <source>Voro Player</source>
        <translation>مشغل Voro</translation>
    </message>
</context>
<context>
    <name>Sheet</name>
    <message>
        <source>Close</source>
        <translation>إغلاق</translation>
    </message>
</context>
<context>
    <name>SleepSheet</name>
    <message>
        <source>Sleep timer</source>
        <translation>مؤقت النوم</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>إيقاف</translation>
    </message>
    <message>
        <source>At the end of the track</source>
        <translation>عند نهاية المقطع</translation>
    </message>
    <message>
        <source>In %1 minutes</source>
        <translation>بعد %1 دقيقة</translation>
    </message>
</context>
<context>
    <name>SourceSheet</name>
    <message>
        <source>Sources</source>
        <translation>المصادر</translation>
    </message>
    <message>
        <source>Show “%1”</source>
        <translation>إظهار «%1»</translation>
    </message>
</context>
<context>
    <name>SpeedSheet</name>
    <message>
        <source>Speed</source>
        <translation>السرعة</translation>
    </message>
</context>
<context>
    <name>StartPage</name>
    <message>
        <source>Go on with “%1”</source>
        <translation>متابعة «%1»</translation>
    </message>
    <message>
        <source>Open files…</source>
        <translation>فتح ملفات…</translation>
    </message>
    <message>
        <source>Open an address…</source>
        <translation>فتح عنوان…</translation>
    </message>
    <message>
        <source>Play the sample</source>
        <translation>تشغيل العينة</translation>
    </message>
</context>
<context>
    <name>Transport</name>
    <message>
        <source>Position</source>
        <translation>الموضع</translation>
    </message>
    <message>
        <source>Repeats the track</source>
        <translation>يكرر المقطع</translation>
    </message>
    <message>
        <source>Repeats everything</source>
        <translation>يكرر الكل</translation>
    </message>
    <message>
        <source>Repeats nothing</source>
        <translation>لا يكرر شيئًا</translation>
    </message>
    <message>
        <source>Plays in a mixed order</source>
        <translation>تشغيل بترتيب مخلوط</translation>
    </message>
    <message>
        <source>Plays in order</source>
        <translation>تشغيل بالترتيب</translation>
    </message>
    <message>
        <source>Previous track</source>
        <translation>المقطع السابق</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>إيقاف مؤقت</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>تشغيل</translation>
    </message>
    <message>
        <source>Next track</source>
        <translation>المقطع التالي</translation>
    </message>
    <message>
        <source>Queue</source>
        <translation>قائمة الانتظار</translation>
    </message>
</context>
</TS>

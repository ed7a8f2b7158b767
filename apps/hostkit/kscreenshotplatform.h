#ifndef KSCREENSHOTPLATFORM_H
#define KSCREENSHOTPLATFORM_H

// The programs' screenshot mode (--screenshots DIR) must work on a machine
// without a display. Called before the application object exists, it picks
// Qt's offscreen platform for that mode when there is no display and
// nobody chose a platform.
class KScreenshotPlatform
{
public:
    static constexpr const char* kOption = "screenshots";

    static bool requested(int argc, char** argv);
    static void chooseFor(int argc, char** argv);
};

#endif // KSCREENSHOTPLATFORM_H

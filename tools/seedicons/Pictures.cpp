// The pictures: simple shapes in the 16 VGA colours, in the manner of the
// shell of the time. Small pictures (a page, a gear, a star) are reused as
// badges on larger ones, so related icons look related and stay distinct.
#include "Pictures.h"

#include <cmath>
#include <numbers>
#include <stdexcept>

namespace glyphmoor::seed {

namespace {

using Pt = std::pair<float, float>;

// Draws `picture` shrunk to `scale` with its top-left corner at (x, y).
void Badge(Canvas& c, Picture picture, float scale, float x, float y) {
    c.PushTransform(scale, x, y);
    picture(c);
    c.PopTransform();
}

// --- Pages and windows -------------------------------------------------------

void BlankPage(Canvas& c) {
    c.Fill(Polygon({{10, 3}, {30, 3}, {38, 11}, {38, 45}, {10, 45}}), kWhite, kBlack);
    c.Fill(Polygon({{30, 3}, {30, 11}, {38, 11}}), kSilver, kBlack);
}

void TextPage(Canvas& c) {
    BlankPage(c);
    for (float y = 15; y < 42; y += 5) {
        c.Fill(Rect(14, y, y < 20 ? 27 : 34, y + 2), kGray);
    }
}

void Window(Canvas& c, Colour client) {
    c.Fill(Rect(4, 7, 44, 41), client, kBlack);
    c.Fill(Rect(5, 8, 43, 15), kNavy);
    c.Fill(Rect(37, 9, 42, 14), kSilver, kBlack);
}

void AppWindow(Canvas& c) {
    Window(c, kWhite);
    c.Fill(Rect(9, 19, 39, 22), kSilver);
    c.Fill(Rect(9, 25, 30, 28), kSilver);
}

void DosWindow(Canvas& c) {
    Window(c, kBlack);
    // "C:\>" and a cursor, in thick strokes.
    c.Fill(Line(10, 22, 10, 30, 2.5f), kSilver);
    c.Fill(Line(10, 22, 14, 22, 2.5f), kSilver);
    c.Fill(Line(10, 30, 14, 30, 2.5f), kSilver);
    c.Fill(Rect(17, 24, 19, 26), kSilver);
    c.Fill(Rect(17, 28, 19, 30), kSilver);
    c.Fill(Line(22, 22, 27, 30, 2.5f), kSilver);
    c.Fill(Polygon({{29, 22}, {35, 26}, {29, 30}}), kSilver);
    c.Fill(Rect(10, 34, 16, 36), kSilver);
}

// --- Small symbols, used alone and as badges ----------------------------------

Shape GearShape(float cx, float cy, float r) {
    std::vector<Pt> points;
    constexpr int kTeeth = 8;
    for (int i = 0; i < kTeeth * 4; ++i) {
        const double a = 2 * std::numbers::pi * i / (kTeeth * 4);
        const float rr = (i % 4 < 2) ? r : r * 0.72f;
        points.push_back(
            {cx + rr * static_cast<float>(std::cos(a)), cy + rr * static_cast<float>(std::sin(a))});
    }
    return Minus(Polygon(points), Ellipse(cx, cy, r * 0.3f, r * 0.3f));
}

void Gear(Canvas& c) {
    c.Fill(GearShape(24, 24, 20), kSilver, kBlack);
}

Shape StarShape(float cx, float cy, float r) {
    std::vector<Pt> points;
    for (int i = 0; i < 10; ++i) {
        const double a = -std::numbers::pi / 2 + std::numbers::pi * i / 5;
        const float rr = i % 2 == 0 ? r : r * 0.42f;
        points.push_back(
            {cx + rr * static_cast<float>(std::cos(a)), cy + rr * static_cast<float>(std::sin(a))});
    }
    return Polygon(points);
}

void Star(Canvas& c) {
    c.Fill(StarShape(24, 25, 21), kYellow, kOlive);
}

void Globe(Canvas& c) {
    c.Fill(Ellipse(24, 24, 20, 20), kBlue, kNavy);
    c.Fill(Polygon({{12, 12}, {22, 9}, {26, 16}, {20, 22}, {22, 30}, {15, 34}, {10, 24}}), kLime, kGreen);
    c.Fill(Polygon({{30, 12}, {38, 16}, {41, 26}, {34, 36}, {30, 28}, {33, 21}}), kLime, kGreen);
}

void Clock(Canvas& c) {
    c.Fill(Ellipse(24, 24, 20, 20), kWhite, kBlack);
    for (int i = 0; i < 12; i += 3) {
        const double a = 2 * std::numbers::pi * i / 12;
        const float x = 24 + 16 * static_cast<float>(std::cos(a)),
                    y = 24 + 16 * static_cast<float>(std::sin(a));
        c.Fill(Ellipse(x, y, 1.5f, 1.5f), kBlack);
    }
    c.Fill(Line(24, 24, 24, 11, 3), kBlack);
    c.Fill(Line(24, 24, 33, 28, 3), kRed);
}

void Note(Canvas& c) {
    c.Fill(Ellipse(16, 37, 8, 6), kBlack);
    c.Fill(Rect(21, 8, 25, 37), kBlack);
    c.Fill(Polygon({{25, 8}, {36, 15}, {36, 22}, {25, 16}}), kBlack);
}

void Magnifier(Canvas& c) {
    c.Fill(Ellipse(20, 20, 13, 13), kAqua);
    c.Fill(Ring(20, 20, 13, 5), kGray, kBlack);
    c.Fill(Line(29, 29, 42, 42, 7), kMaroon, kBlack);
}

void QuestionMark(Canvas& c, Colour colour) {
    c.Fill(Line(16, 16, 20, 10, 5), colour);
    c.Fill(Line(20, 10, 28, 10, 5), colour);
    c.Fill(Line(28, 10, 32, 16, 5), colour);
    c.Fill(Line(32, 16, 32, 20, 5), colour);
    c.Fill(Line(32, 20, 24, 26, 5), colour);
    c.Fill(Line(24, 26, 24, 31, 5), colour);
    c.Fill(Ellipse(24, 38, 3.5f, 3.5f), colour);
}

void Help(Canvas& c) {
    c.Fill(Rect(8, 5, 40, 44), kNavy, kBlack);
    c.Fill(Rect(8, 5, 12, 44), kBlue);
    c.PushTransform(0.75f, 8, 5);
    QuestionMark(c, kYellow);
    c.PopTransform();
}

void Printer(Canvas& c) {
    c.Fill(Rect(14, 4, 34, 20), kWhite, kBlack);
    c.Fill(Polygon({{6, 20}, {42, 20}, {44, 38}, {4, 38}}), kSilver, kBlack);
    c.Fill(Rect(10, 38, 38, 43), kGray, kBlack);
    c.Fill(Rect(34, 24, 38, 27), kLime);
}

void People(Canvas& c) {
    c.Fill(Ellipse(32, 14, 7, 7), kYellow, kOlive);
    c.Fill(Polygon({{20, 44}, {24, 26}, {40, 26}, {44, 44}}), kRed, kMaroon);
    c.Fill(Ellipse(17, 18, 7, 7), kYellow, kOlive);
    c.Fill(Polygon({{4, 46}, {8, 30}, {26, 30}, {30, 46}}), kBlue, kNavy);
}

void Key(Canvas& c) {
    c.Fill(Minus(Ellipse(14, 16, 10, 10), Ellipse(12, 14, 3, 3)), kYellow, kOlive);
    c.Fill(Line(20, 22, 40, 42, 6), kYellow, kOlive);
    c.Fill(Line(33, 35, 38, 30, 5), kYellow, kOlive);
    c.Fill(Line(38, 40, 43, 35, 5), kYellow, kOlive);
}

void Moon(Canvas& c) {
    c.Fill(Minus(Ellipse(22, 24, 17, 17), Ellipse(31, 18, 14, 14)), kYellow, kOlive);
}

void Power(Canvas& c) {
    c.Fill(Minus(Ring(24, 26, 14, 6), Polygon({{18, 4}, {30, 4}, {24, 24}})), kRed, kMaroon);
    c.Fill(Rect(21, 6, 27, 26), kRed, kMaroon);
}

void Cube(Canvas& c) {
    c.Fill(Polygon({{24, 6}, {42, 14}, {24, 22}, {6, 14}}), kAqua, kBlack);
    c.Fill(Polygon({{6, 14}, {24, 22}, {24, 42}, {6, 34}}), kTeal, kBlack);
    c.Fill(Polygon({{24, 22}, {42, 14}, {42, 34}, {24, 42}}), kBlue, kBlack);
}

void Phone(Canvas& c) {
    c.Fill(Polygon({{6, 30}, {14, 22}, {34, 22}, {42, 30}, {42, 42}, {6, 42}}), kGray, kBlack);
    c.Fill(Polygon({{4, 16}, {12, 8}, {36, 8}, {44, 16}, {38, 20}, {32, 14}, {16, 14}, {10, 20}}), kBlack);
    c.Fill(Ellipse(24, 33, 6, 5), kSilver, kBlack);
}

void Film(Canvas& c) {
    c.Fill(Rect(8, 4, 40, 44), kBlack);
    for (float y = 6; y < 42; y += 6) {
        c.Fill(Rect(10, y, 13, y + 3), kWhite);
        c.Fill(Rect(35, y, 38, y + 3), kWhite);
    }
    c.Fill(Rect(16, 7, 32, 22), kAqua);
    c.Fill(Rect(16, 26, 32, 41), kAqua);
}

void Speaker(Canvas& c) {
    c.Fill(Polygon({{4, 18}, {12, 18}, {24, 8}, {24, 40}, {12, 30}, {4, 30}}), kGray, kBlack);
    c.Fill(Minus(Ring(24, 24, 9, 3), Rect(0, 0, 28, 48)), kBlack);
    c.Fill(Minus(Ring(24, 24, 16, 3), Rect(0, 0, 30, 48)), kBlack);
}

void Landscape(Canvas& c) {
    c.Fill(Rect(4, 8, 44, 40), kAqua, kBlack);
    c.Fill(Ellipse(34, 17, 5, 5), kYellow);
    c.Fill(Polygon({{5, 39}, {16, 20}, {26, 32}, {32, 26}, {43, 39}}), kGreen);
}

void Calendar(Canvas& c) {
    c.Fill(Rect(6, 6, 42, 44), kWhite, kBlack);
    c.Fill(Rect(7, 7, 41, 15), kRed);
    for (float y = 19; y < 42; y += 6) {
        for (float x = 10; x < 38; x += 7) {
            c.Fill(Rect(x, y, x + 4, y + 3), kGray);
        }
    }
}

void Envelope(Canvas& c) {
    c.Fill(Rect(4, 12, 44, 38), kWhite, kBlack);
    c.Fill(Line(5, 13, 24, 27, 2), kBlack);
    c.Fill(Line(43, 13, 24, 27, 2), kBlack);
}

// --- Folders ---------------------------------------------------------------

void Folder(Canvas& c) {
    c.Fill(Polygon({{3, 12}, {5, 8}, {17, 8}, {20, 12}}), kYellow, kOlive);
    c.Fill(Rect(3, 12, 45, 41), kYellow, kOlive);
}

void OpenFolder(Canvas& c) {
    c.Fill(Polygon({{3, 12}, {5, 8}, {17, 8}, {20, 12}}), kYellow, kOlive);
    c.Fill(Rect(3, 12, 41, 41), kOlive, kBlack);
    c.Fill(Rect(8, 15, 36, 30), kWhite, kBlack);
    c.Fill(Polygon({{10, 22}, {47, 22}, {41, 41}, {3, 41}}), kYellow, kOlive);
}

void FolderWith(Canvas& c, Picture badge) {
    Folder(c);
    Badge(c, badge, 0.55f, 20, 19);
}

void ProgramsFolder(Canvas& c) {
    FolderWith(c, AppWindow);
}
void DocumentsFolder(Canvas& c) {
    FolderWith(c, TextPage);
}
void SettingsFolder(Canvas& c) {
    FolderWith(c, Gear);
}
void FavoritesFolder(Canvas& c) {
    FolderWith(c, Star);
}
void PrintersFolder(Canvas& c) {
    FolderWith(c, Printer);
}
void UsersFolder(Canvas& c) {
    FolderWith(c, People);
}
void HistoryFolder(Canvas& c) {
    FolderWith(c, Clock);
}
void CacheFolder(Canvas& c) {
    FolderWith(c, Cube);
}
void MyDocuments(Canvas& c) {
    Folder(c);
    Badge(c, TextPage, 0.6f, 4, 14);
    Badge(c, TextPage, 0.6f, 16, 18);
}

void ProgramGroup(Canvas& c) {
    c.Fill(Rect(4, 6, 44, 42), kSilver, kBlack);
    c.Fill(Rect(5, 7, 43, 13), kNavy);
    Badge(c, AppWindow, 0.4f, 7, 17);
    Badge(c, DosWindow, 0.4f, 25, 17);
    Badge(c, TextPage, 0.35f, 17, 28);
}

// --- Computers and drives ------------------------------------------------------

void Monitor(Canvas& c, Colour screen) {
    c.Fill(Rect(6, 4, 42, 32), kSilver, kBlack);
    c.Fill(Rect(10, 8, 38, 28), screen, kBlack);
    c.Fill(Rect(18, 32, 30, 36), kGray, kBlack);
    c.Fill(Rect(8, 36, 40, 44), kSilver, kBlack);
}

void Computer(Canvas& c) {
    Monitor(c, kTeal);
    c.Fill(Rect(28, 39, 36, 41), kLime);
}

void Desktop(Canvas& c) {
    Monitor(c, kTeal);
    c.Fill(Rect(12, 10, 16, 14), kYellow);
    c.Fill(Rect(12, 17, 16, 21), kWhite);
    c.Fill(Rect(11, 25, 37, 28), kSilver);
}

void ShutDown(Canvas& c) {
    Monitor(c, kNavy);
    Badge(c, Power, 0.4f, 14, 6);
}

void Network(Canvas& c) {
    c.Fill(Rect(22, 30, 26, 42), kBlack);
    c.Fill(Rect(4, 40, 44, 43), kBlack);
    Badge(c, Computer, 0.55f, 0, 2);
    Badge(c, Computer, 0.55f, 22, 10);
}

void Workgroup(Canvas& c) {
    c.Fill(Rect(4, 40, 44, 43), kBlack);
    Badge(c, Computer, 0.45f, 0, 16);
    Badge(c, Computer, 0.45f, 13, 2);
    Badge(c, Computer, 0.45f, 26, 16);
}

void DialUp(Canvas& c) {
    Badge(c, Computer, 0.7f, 0, 0);
    Badge(c, Phone, 0.55f, 21, 21);
}

void DriveBox(Canvas& c) {
    c.Fill(Polygon({{4, 24}, {12, 16}, {44, 16}, {44, 34}, {36, 42}, {4, 42}}), kSilver, kBlack);
    c.Fill(Polygon({{4, 24}, {12, 16}, {44, 16}, {36, 24}}), kWhite, kBlack);
    c.Fill(Polygon({{36, 24}, {44, 16}, {44, 34}, {36, 42}}), kGray, kBlack);
}

void HardDrive(Canvas& c) {
    DriveBox(c);
    c.Fill(Rect(8, 33, 11, 36), kLime);
    c.Fill(Rect(16, 33, 32, 35), kGray);
}

void RemovableDrive(Canvas& c) {
    DriveBox(c);
    c.Fill(Rect(10, 30, 32, 34), kBlack);
    c.Fill(Rect(8, 37, 11, 40), kYellow);
}

void Floppy35(Canvas& c) {
    c.Fill(Polygon({{6, 4}, {40, 4}, {44, 8}, {44, 44}, {6, 44}}), kNavy, kBlack);
    c.Fill(Rect(14, 4, 34, 17), kSilver, kBlack);
    c.Fill(Rect(27, 6, 31, 15), kNavy);
    c.Fill(Rect(11, 23, 39, 44), kWhite, kBlack);
    c.Fill(Rect(14, 28, 36, 30), kGray);
}

void Floppy525(Canvas& c) {
    c.Fill(Rect(4, 4, 44, 44), kBlack);
    c.Fill(Ring(24, 24, 7, 4), kGray);
    c.Fill(Rect(21, 32, 27, 44), kGray);
    c.Fill(Rect(6, 6, 20, 12), kWhite);
}

void Disc(Canvas& c) {
    c.Fill(Minus(Ellipse(24, 24, 20, 20), Ellipse(24, 24, 4, 4)), kSilver, kBlack);
    c.Fill(Minus(Ring(24, 24, 12, 5), Polygon({{24, 24}, {48, 0}, {48, 48}})), kAqua);
    c.Fill(Minus(Ring(24, 24, 12, 5), Polygon({{24, 24}, {0, 48}, {0, 0}})), kFuchsia);
}

void CdDrive(Canvas& c) {
    DriveBox(c);
    Badge(c, Disc, 0.5f, 4, 2);
}

void RamDrive(Canvas& c) {
    c.Fill(Rect(3, 14, 45, 34), kGreen, kBlack);
    for (float x = 7; x < 40; x += 9) {
        c.Fill(Rect(x, 18, x + 6, 28), kBlack);
    }
    for (float x = 5; x < 44; x += 3) {
        c.Fill(Rect(x, 34, x + 1.5f, 38), kYellow);
    }
}

void Pipe(Canvas& c, Colour colour) {
    c.Fill(Rect(21, 40, 27, 48), colour, kBlack);
    c.Fill(Rect(4, 44, 44, 48), colour, kBlack);
}

void NetDrive(Canvas& c) {
    c.PushTransform(0.85f, 3, -4);
    HardDrive(c);
    c.PopTransform();
    Pipe(c, kLime);
}

void NetDriveOffline(Canvas& c) {
    c.PushTransform(0.85f, 3, -4);
    HardDrive(c);
    c.PopTransform();
    Pipe(c, kGray);
    c.Fill(Line(28, 30, 44, 46, 5), kRed);
    c.Fill(Line(44, 30, 28, 46, 5), kRed);
}

// A computer or a globe seen through the network: on a cable.
void NetComputer(Canvas& c) {
    c.PushTransform(0.85f, 3, -2);
    Computer(c);
    c.PopTransform();
    Pipe(c, kLime);
}

void EntireNetwork(Canvas& c) {
    c.PushTransform(0.8f, 5, 0);
    Globe(c);
    c.PopTransform();
    Pipe(c, kLime);
}

void AudioCd(Canvas& c) {
    Disc(c);
    Badge(c, Note, 0.55f, 22, 20);
}

// --- Desktop objects ---------------------------------------------------------

void Bin(Canvas& c) {
    c.Fill(Polygon({{10, 14}, {38, 14}, {35, 45}, {13, 45}}), kSilver, kBlack);
    for (float x = 16; x < 34; x += 6) {
        c.Fill(Line(x, 18, x + 0.5f, 42, 1.5f), kGray);
    }
    c.Fill(Rect(8, 10, 40, 15), kGray, kBlack);
}

void BinFull(Canvas& c) {
    c.Fill(Polygon({{12, 12}, {20, 2}, {26, 8}, {18, 14}}), kWhite, kBlack);
    c.Fill(Polygon({{22, 12}, {34, 3}, {40, 12}}), kWhite, kBlack);
    Bin(c);
    c.Fill(Polygon({{14, 10}, {24, 4}, {34, 10}}), kWhite, kBlack);
}

void Briefcase(Canvas& c) {
    c.Fill(Minus(Rect(17, 8, 31, 16), Rect(20, 11, 28, 16)), kMaroon, kBlack);
    c.Fill(Rect(4, 15, 44, 42), kOlive, kBlack);
    c.Fill(Rect(4, 24, 44, 26), kMaroon);
    c.Fill(Rect(21, 22, 27, 28), kYellow, kBlack);
}

void InBox(Canvas& c) {
    Badge(c, Envelope, 0.7f, 7, 0);
    c.Fill(Polygon({{2, 28}, {14, 28}, {17, 33}, {31, 33}, {34, 28}, {46, 28}, {42, 44}, {6, 44}}), kTeal,
           kBlack);
}

void Internet(Canvas& c) {
    Globe(c);
}

// --- Start menu --------------------------------------------------------------

void Run(Canvas& c) {
    AppWindow(c);
    c.Fill(Polygon({{16, 30}, {30, 30}, {30, 25}, {40, 33}, {30, 41}, {30, 36}, {16, 36}}), kGreen, kBlack);
}

void Find(Canvas& c) {
    Badge(c, TextPage, 0.7f, 0, 0);
    Badge(c, Magnifier, 0.75f, 12, 12);
}

void Suspend(Canvas& c) {
    Monitor(c, kBlack);
    Badge(c, Moon, 0.45f, 13, 7);
}

void LogOff(Canvas& c) {
    Badge(c, AppWindow, 0.7f, 0, 0);
    Badge(c, Key, 0.65f, 16, 16);
}

void ControlPanel(Canvas& c) {
    Badge(c, AppWindow, 0.8f, 0, 0);
    Badge(c, Gear, 0.55f, 20, 20);
}

// --- Documents ---------------------------------------------------------------

void PageWith(Canvas& c, Picture badge) {
    BlankPage(c);
    Badge(c, badge, 0.5f, 14, 16);
}

void HtmlDocument(Canvas& c) {
    PageWith(c, Globe);
}
void ImageDocument(Canvas& c) {
    PageWith(c, Landscape);
}
void IniDocument(Canvas& c) {
    TextPage(c);
    Badge(c, Gear, 0.5f, 20, 22);
}
void BatchFile(Canvas& c) {
    Window(c, kWhite);
    Badge(c, Gear, 0.5f, 12, 17);
}
void TextDocument(Canvas& c) {
    TextPage(c);
    for (float x = 14; x < 36; x += 5) {
        c.Fill(Ring(x, 5, 2, 1.5f), kBlack);
    }
}
void BitmapDocument(Canvas& c) {
    BlankPage(c);
    c.Fill(Ellipse(20, 22, 6, 6), kRed, kBlack);
    c.Fill(Rect(24, 26, 34, 36), kBlue, kBlack);
    c.Fill(Polygon({{14, 40}, {20, 30}, {26, 40}}), kYellow, kBlack);
}
void RichTextDocument(Canvas& c) {
    BlankPage(c);
    const Colour colours[] = {kRed, kBlue, kGreen, kPurple, kBlue};
    float y = 15;
    for (const Colour& colour : colours) {
        c.Fill(Rect(14, y, 34, y + 2.5f), colour);
        y += 5.5f;
    }
}
void WriteDocument(Canvas& c) {
    TextPage(c);
    c.Fill(Line(40, 14, 22, 38, 4), kMaroon, kBlack);
    c.Fill(Polygon({{22, 38}, {20, 43}, {25, 40}}), kBlack);
}
void VideoClip(Canvas& c) {
    Film(c);
    c.Fill(Polygon({{19, 10}, {29, 14.5f}, {19, 19}}), kBlack);
}
void MovieClip(Canvas& c) {
    c.Fill(Rect(4, 18, 44, 44), kBlack);
    c.Fill(Polygon({{4, 8}, {42, 2}, {44, 12}, {6, 18}}), kWhite, kBlack);
    for (float x = 10; x < 40; x += 9) {
        c.Fill(Polygon({{x, 7.5f}, {x + 4, 7}, {x + 6, 15}, {x + 2, 15.5f}}), kBlack);
    }
    c.Fill(Rect(10, 24, 38, 38), kTeal);
}
void MediaClip(Canvas& c) {
    Film(c);
    Badge(c, Note, 0.5f, 20, 20);
}
void Paint(Canvas& c) {
    c.Fill(Ellipse(22, 26, 19, 15), kYellow, kOlive);
    c.Fill(Ellipse(14, 22, 3, 3), kRed);
    c.Fill(Ellipse(22, 18, 3, 3), kBlue);
    c.Fill(Ellipse(30, 22, 3, 3), kGreen);
    c.Fill(Line(26, 36, 44, 6, 4), kMaroon, kBlack);
}
void Wordpad(Canvas& c) {
    AppWindow(c);
    c.Fill(Line(40, 14, 24, 36, 4), kBlue, kBlack);
}
void SoundRecorder(Canvas& c) {
    c.Fill(Ellipse(24, 16, 9, 12), kGray, kBlack);
    c.Fill(Rect(22, 28, 26, 40), kBlack);
    c.Fill(Rect(14, 40, 34, 44), kBlack);
}
void ScheduledTasks(Canvas& c) {
    Calendar(c);
    Badge(c, Clock, 0.55f, 20, 20);
}
void Subscriptions(Canvas& c) {
    Calendar(c);
    Badge(c, Star, 0.55f, 20, 20);
}
void History(Canvas& c) {
    HistoryFolder(c);
}

// --- Overlays (drawn in the lower-left corner of a transparent icon) -----------

void ShortcutOverlay(Canvas& c) {
    c.Fill(Rect(0, 30, 18, 48), kWhite, kBlack);
    c.Fill(Line(5, 43, 9, 37, 3), kBlack);
    c.Fill(Line(9, 37, 13, 35, 3), kBlack);
    c.Fill(Polygon({{10, 31}, {16, 35}, {10, 39}}), kBlack);
}

void SharingOverlay(Canvas& c) {
    c.Fill(Polygon({{0, 38}, {8, 34}, {22, 34}, {22, 38}, {14, 39}, {24, 40}, {24, 44}, {14, 46}, {0, 46}}),
           kAqua, kBlack);
}

// The program's own icon: a palette over a window, for an icon changer.
void Program(Canvas& c) {
    Badge(c, AppWindow, 0.8f, 0, 0);
    Badge(c, Paint, 0.6f, 18, 18);
}

// A picture for icon indices the default machine's catalogue does not use.
void Unused(Canvas& c) {
    c.Fill(Rect(8, 8, 40, 40), kSilver, kGray);
    c.Fill(Rect(14, 14, 34, 18), kGray);
}

}  // namespace

const std::vector<NamedPicture>& AllPictures() {
    static const std::vector<NamedPicture> kPictures = {
        {"blank-page", BlankPage},
        {"text-page", TextPage},
        {"app-window", AppWindow},
        {"dos-window", DosWindow},
        {"folder", Folder},
        {"open-folder", OpenFolder},
        {"floppy-525", Floppy525},
        {"floppy-35", Floppy35},
        {"removable-drive", RemovableDrive},
        {"hard-drive", HardDrive},
        {"net-drive", NetDrive},
        {"net-drive-offline", NetDriveOffline},
        {"cd-drive", CdDrive},
        {"ram-drive", RamDrive},
        {"globe", Globe},
        {"computer", Computer},
        {"net-computer", NetComputer},
        {"entire-network", EntireNetwork},
        {"network", Network},
        {"workgroup", Workgroup},
        {"programs", ProgramsFolder},
        {"documents", DocumentsFolder},
        {"settings", SettingsFolder},
        {"find", Find},
        {"help", Help},
        {"run", Run},
        {"suspend", Suspend},
        {"shut-down", ShutDown},
        {"sharing-overlay", SharingOverlay},
        {"shortcut-overlay", ShortcutOverlay},
        {"bin", Bin},
        {"bin-full", BinFull},
        {"dial-up", DialUp},
        {"desktop", Desktop},
        {"control-panel", ControlPanel},
        {"program-group", ProgramGroup},
        {"printers", PrintersFolder},
        {"audio-cd", AudioCd},
        {"users", UsersFolder},
        {"favorites", FavoritesFolder},
        {"log-off", LogOff},
        {"ini-document", IniDocument},
        {"text-document", TextDocument},
        {"batch-file", BatchFile},
        {"my-documents", MyDocuments},
        {"internet", Internet},
        {"html-document", HtmlDocument},
        {"image-document", ImageDocument},
        {"in-box", InBox},
        {"briefcase", Briefcase},
        {"history", History},
        {"activex-cache", CacheFolder},
        {"subscriptions", Subscriptions},
        {"scheduled-tasks", ScheduledTasks},
        {"video-clip", VideoClip},
        {"movie-clip", MovieClip},
        {"wave-sound", Speaker},
        {"midi", Note},
        {"media-clip", MediaClip},
        {"paint", Paint},
        {"bitmap-document", BitmapDocument},
        {"wordpad", Wordpad},
        {"rich-text", RichTextDocument},
        {"write-document", WriteDocument},
        {"sound-recorder", SoundRecorder},
        {"program", Program},
        {"unused", Unused},
    };
    return kPictures;
}

Picture PictureNamed(const std::string& name) {
    for (const NamedPicture& p : AllPictures()) {
        if (name == p.name) {
            return p.draw;
        }
    }
    throw std::invalid_argument("no picture named " + name);
}

}  // namespace glyphmoor::seed

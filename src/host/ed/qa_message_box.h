// Message boxes of the host with the button, icon and result codes of the platform
// that the plug-in was written for. Every box of the system bears the caption
// "Ostrel Suite".
#pragma once

#include <string_view>

constexpr unsigned MB_OK = 0x0;
constexpr unsigned MB_OKCANCEL = 0x1;
constexpr unsigned MB_YESNOCANCEL = 0x3;
constexpr unsigned MB_YESNO = 0x4;
constexpr unsigned MB_ICONERROR = 0x10;
constexpr unsigned MB_ICONQUESTION = 0x20;
constexpr unsigned MB_ICONWARNING = 0x30;
constexpr unsigned MB_ICONINFORMATION = 0x40;
constexpr unsigned MB_TYPEMASK = 0xF;

constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int IDYES = 6;
constexpr int IDNO = 7;

// The caption of the suite's message boxes.
inline constexpr std::wstring_view kOstrelSuiteCaption = L"Ostrel Suite";

// Shows a box with the suite's caption; answers IDOK, IDCANCEL, IDYES or IDNO.
int QaMessageBox(std::wstring_view text, unsigned type = MB_OK);

// The base library's plain message: an OK box with an information icon.
void SdShowMsg(std::wstring_view text);

// The base library's report that the suite's frame library has nothing to offer: no
// drawing frame was found or chosen in the current drawing.
void showMessageKrmCadNotInitialized();

// The answer a box gives when nobody chooses: Cancel when the box has it, else No,
// else OK.
int qaSafestButton(unsigned type);

// Whether `result` is one of the buttons of a box of `type`.
bool qaBoxHasButton(unsigned type, int result);

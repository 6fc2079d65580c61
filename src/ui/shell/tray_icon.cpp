#include "ui/shell/tray_icon.h"

#include <shellapi.h>

#include <memory>

#include "base/text.h"

namespace verbatix {

TrayIcon trayIcon;

// Characters of the tip, terminator included, in the first version of the notification data.
static constexpr std::size_t kTipLimit = 64;

// The first version of the notification data is understood by every shell, and makes the callback carry
// plain mouse messages.
static NOTIFYICONDATAW NotifyData(const TrayIcon& icon) {
    NOTIFYICONDATAW data = {};
    data.cbSize = NOTIFYICONDATAW_V1_SIZE;
    data.hWnd = icon.owner;
    data.uID = icon.id;
    return data;
}

namespace {

// What the worker needs, its own: it may outlive the wait for it.
struct AddRequest {
    NOTIFYICONDATAW data;
    WORD iconResource;
    TrayLook look;
    UniqueKernelObject stopRequest;
};

bool IsStopped(const AddRequest& request, DWORD milliseconds) {
    return WaitForSingleObject(request.stopRequest.Get(), milliseconds) != WAIT_TIMEOUT;
}

DWORD WINAPI AddUntilShown(void* parameter) noexcept {
    const std::unique_ptr<AddRequest> request(static_cast<AddRequest*>(parameter));
    constexpr DWORD kRetryMilliseconds = 1000;
    do {
        const UniqueIcon picture = MakeTrayPicture(request->iconResource, request->look);
        request->data.hIcon = picture.Get();
        // At logon an addition can time out in the shell and yet be there: then a change of it succeeds.
        if (Shell_NotifyIconW(NIM_ADD, &request->data) || Shell_NotifyIconW(NIM_MODIFY, &request->data)) {
            // The shell may have taken its time, and the icon have been taken away meanwhile.
            if (IsStopped(*request, 0)) Shell_NotifyIconW(NIM_DELETE, &request->data);
            return 0;
        }
    } while (!IsStopped(*request, kRetryMilliseconds));
    return 0;
}

HANDLE SecondHandle(HANDLE handle) {
    HANDLE second = nullptr;
    DuplicateHandle(GetCurrentProcess(), handle, GetCurrentProcess(), &second, 0, FALSE,
                    DUPLICATE_SAME_ACCESS);
    return second;
}

}  // namespace

static void StopWorker(TrayIcon& icon) {
    if (!icon.worker) return;
    SetEvent(icon.stopRequest.Get());
    // The worker may wait for the shell, and the shell for this thread's window: keep answering messages.
    constexpr DWORD kPatienceMilliseconds = 5000;
    const HANDLE worker = icon.worker.Get();
    while (MsgWaitForMultipleObjects(1, &worker, FALSE, kPatienceMilliseconds, QS_SENDMESSAGE) ==
           WAIT_OBJECT_0 + 1) {
        MSG message;
        PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | (QS_SENDMESSAGE << 16));
    }
    icon.worker.Reset();
}

void AddTrayIcon(TrayIcon& icon) {
    StopWorker(icon);
    icon.wanted = true;
    // A worker that was given up still has the old event, and stays stopped.
    icon.stopRequest.Reset(CreateEventW(nullptr, TRUE, FALSE, nullptr));

    auto request = std::make_unique<AddRequest>();
    request->data = NotifyData(icon);
    request->data.uFlags = NIF_ICON | NIF_MESSAGE | NIF_TIP;
    request->data.uCallbackMessage = icon.callbackMessage;
    CopyText(request->data.szTip, icon.tip, kTipLimit);
    icon.shownTip = icon.tip;
    request->iconResource = icon.iconResource;
    request->look = icon.shownLook = icon.look;
    request->stopRequest.Reset(SecondHandle(icon.stopRequest.Get()));
    icon.worker.Reset(CreateThread(nullptr, 0, AddUntilShown, request.get(), 0, nullptr));
    if (icon.worker) static_cast<void>(request.release());
}

void RefreshTrayIcon(TrayIcon& icon) {
    const bool isOther = icon.look != icon.shownLook;
    if (!icon.wanted || (icon.tip == icon.shownTip && !isOther)) return;
    if (icon.worker && WaitForSingleObject(icon.worker.Get(), 0) == WAIT_TIMEOUT) return;
    NOTIFYICONDATAW data = NotifyData(icon);
    data.uFlags = isOther ? NIF_TIP | NIF_ICON : NIF_TIP;
    CopyText(data.szTip, icon.tip, kTipLimit);
    const UniqueIcon picture = isOther ? MakeTrayPicture(icon.iconResource, icon.look) : UniqueIcon();
    data.hIcon = picture.Get();
    // Asked once, whatever the answer: a task bar that comes up later is told everything anew.
    Shell_NotifyIconW(NIM_MODIFY, &data);
    icon.shownTip = icon.tip;
    icon.shownLook = icon.look;
}

bool ShowTrayBalloon(const TrayIcon& icon, const std::wstring& title, const std::wstring& text) {
    NOTIFYICONDATAW data = NotifyData(icon);
    // The first version of the data has no balloons.
    data.cbSize = NOTIFYICONDATAW_V2_SIZE;
    data.uFlags = NIF_INFO;
    data.dwInfoFlags = NIIF_INFO;
    CopyText(data.szInfoTitle, title);
    CopyText(data.szInfo, text);
    return icon.wanted && Shell_NotifyIconW(NIM_MODIFY, &data) != FALSE;
}

void RemoveTrayIcon(TrayIcon& icon) {
    StopWorker(icon);
    icon.wanted = false;
    NOTIFYICONDATAW data = NotifyData(icon);
    Shell_NotifyIconW(NIM_DELETE, &data);
}

void RestoreTrayIcon(TrayIcon& icon) {
    if (icon.wanted) AddTrayIcon(icon);
}

void AnimateIntoTray(HWND window) {
    RECT from;
    RECT to;
    const HWND taskBar = FindWindowW(L"Shell_TrayWnd", nullptr);
    HWND notificationArea = FindWindowExW(taskBar, nullptr, L"TrayNotifyWnd", nullptr);
    if (!notificationArea) notificationArea = taskBar;
    if (!IsWindowVisible(window) || !GetWindowRect(window, &from) ||
        !GetWindowRect(notificationArea, &to)) {
        return;
    }
    DrawAnimatedRects(window, IDANI_CAPTION, &from, &to);
}

}  // namespace verbatix

// The status bar of the main window. UI thread only.
#pragma once

#include <string>

namespace verbatix {

// Shows a notice that stands (see notice.h), else what is offered, else the number of entries, whether
// hotkeys are on, and nothing else: part 3 of the status bar is the clock watch's own.
void UpdateStatusBar();

// Shows a text across the status bar until its own come again: at the next selection or change.
void TellInStatusBar(const std::wstring& text);

// Says across the status bar what has happened, with a link behind it that takes it back or does it again.
// It stands until the next step or until the user selects something else.
enum class Offer { kUndo, kRedo };
void OfferInStatusBar(const std::wstring& text, Offer offer);
void WithdrawOffer();

// Puts the link where it belongs now that the bar has another width or font.
void PlaceOffer();

// What the link does.
Offer StandingOffer();

}  // namespace verbatix

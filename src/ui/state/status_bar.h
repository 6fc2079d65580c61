// The status bar of the main window. UI thread only.
#pragma once

#include <optional>
#include <string>

namespace verbatix {

// Shows what is offered, else a notice that stands (see notice.h), else the number of entries, whether
// hotkeys are on, and nothing else: part 3 of the status bar is the clock watch's own. A list that is
// unread or not saved goes before what is offered.
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

// What the link does; nothing while it is not an offer that stands: then it is the shown notice's.
std::optional<Offer> StandingOffer();

// What stands across the bar now, by an offer or a notice, and may be cut; empty when nothing does.
std::wstring LineAcross();

// The bar itself was clicked: help for a notice. What is offered has its link.
void OnStatusBarClick();

}  // namespace verbatix

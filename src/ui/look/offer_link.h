// The link in the status bar behind what has just happened: a button that looks like one, so that the Tab
// key and screen readers find it. UI thread only.
#pragma once

namespace verbatix {

// Makes it, hidden, in the status bar. A press sends IDC_OFFER_LINK to the main window.
void CreateOfferLink();

}  // namespace verbatix

// Figures of the built-in commands.
#pragma once

namespace verbatix::bench {

// A PNG file of 12 million pixels onto the clipboard, above the fixed wait of its paste stroke.
void BenchImage();

}  // namespace verbatix::bench

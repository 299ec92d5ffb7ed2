// Pages of the web, for screenshots: the composed screen does not hold them.
#pragma once

namespace Host {

/// Lets every web control on the screen draw itself as its page looks now. Background work, of
/// whose end the loop hears.
void TakePagePictures();
void DropPagePictures();

}  // namespace Host

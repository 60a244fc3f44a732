#include "lytFilterParser/column/TavColumnFilter.h"

TavColumnFilter::TavColumnFilter(int encryption, int compression, int dir, int citrixPrint, int url)
    : encryptionMode(encryption),
      compressionMode(compression),
      direction(dir),
      citrixPrintMode(citrixPrint),
      urlMode(url) {}

bool TavColumnFilter::restrictsTraffic() const {
  return encryptionMode != BOTH || compressionMode != BOTH || direction != BOTH || citrixPrintMode != BOTH;
}

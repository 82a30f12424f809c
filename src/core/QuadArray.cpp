#include "core/QuadArray.h"

#include "core/LocationStack.h"

namespace tarnwick {

void QuadArray::begin(std::size_t quads) {
    TARNWICK_LOCATION("QuadArray::begin");
    used = 0;
    if (corners.size() < quads * cornersPerQuad) {
        corners.resize(quads * cornersPerQuad);
    }
}

} // namespace tarnwick

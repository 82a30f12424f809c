#include "core/LocationStack.h"
#include "core/QuadArray.h"

#include <GL/gl.h>

namespace tarnwick {

void QuadArray::draw() const {
    TARNWICK_LOCATION("QuadArray::draw");
    if (used == 0) {
        return;
    }
    constexpr auto stride = static_cast<GLsizei>(sizeof(Corner));
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glEnableClientState(GL_COLOR_ARRAY);
    glEnableClientState(GL_VERTEX_ARRAY);
    glTexCoordPointer(2, GL_FLOAT, stride, &corners[0].s);
    glColorPointer(4, GL_FLOAT, stride, &corners[0].colour);
    glVertexPointer(2, GL_FLOAT, stride, &corners[0].x);
    glDrawArrays(GL_QUADS, 0, static_cast<GLsizei>(used));
    glPopClientAttrib();
    // Drawing from arrays leaves the current colour undefined; corner by corner it would be the last one.
    const Colour& last = corners[used - 1].colour;
    glColor4f(last.red, last.green, last.blue, last.alpha);
}

} // namespace tarnwick

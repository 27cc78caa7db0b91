#pragma once

#include "standin/model/document_model.h"

namespace tarncom32::standin {

/// Where something is drawn: on a page or master, or in a group of it (null: at the top level).
struct Surface {
    DocumentModel& model;
    Container& container;
    ShapeNode* group = nullptr;
};

/// A rectangle between two corners, in inches of the surface: the shape with the cells that place it.
ShapeNode& drawRectangle(Surface surface, double x1, double y1, double x2, double y2);
/// An instance of a master of the same document, its pin at a place in inches.
ShapeNode& drop(Surface surface, Container& master, double x, double y);

} // namespace tarncom32::standin

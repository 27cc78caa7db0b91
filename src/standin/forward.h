#pragma once

#include "automation/object.h"
#include "automation/variant.h"

/// The Visio stand-in: an object model with Visio's documented behaviour for add-in code to run against where there is
/// no Visio. It keeps names, groups, masters and cells; it has no formula engine, no style sheets and no layout.
namespace tarncom32::standin {

using automation::Boolean;
using automation::Enumerator;
using automation::Error;
using automation::ObjectRef;
using automation::Ref;
using automation::String;
using automation::StringView;
using automation::Variant;

class Application;
class Cell;
class Document;
class Documents;
class Master;
class Masters;
class Page;
class Pages;
class Shape;
class Shapes;

} // namespace tarncom32::standin

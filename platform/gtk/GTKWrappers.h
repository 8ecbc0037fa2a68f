#pragma once

namespace orvane::platform {

// gtkmm finds the C++ class for an object that GTK hands to it in a table. Registering all of its
// 300 classes costs 2 MB of memory and a sixth of the time to the first picture, and a window
// without controls needs seven of them.
//
// An object of a class that is not registered gets the wrapper of its nearest registered base
// class; without one, gtkmm logs "Failed to wrap object" and returns null. Main thread only; GTK
// must be initialized.

// Registers the classes that this module's own code receives from GTK. A function that receives an
// object of another class through gtkmm either adds the class here or uses GTK's C interface.
void registerWindowWrappers();

// Registers all classes of gtkmm, once. Called before the first control's widget is made: the
// widgets of controls, and what programs add to them, may receive any object.
void registerAllWrappers();

}  // namespace orvane::platform

// Keeps velmora_ui a valid library while it has no screens of its own.
namespace velmora { int uiLibraryAnchor = 0; }

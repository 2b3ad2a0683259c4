// The platform's XML parser.
#pragma once

#include <windows.h>

#include <msxml2.h>

#include "ui/Com.h"

namespace tellurvane {

// A document that never loads anything but the text that it is given. Needs a thread with COM.
HRESULT MakeXmlDocument(ComPtr<IXMLDOMDocument2>& made);

}  // namespace tellurvane

#include "shell/Session.h"

Session& session()
{
    static Session s;
    return s;
}

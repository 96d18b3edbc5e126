// A recorder in software: answers request bytes with answer bytes.
#pragma once

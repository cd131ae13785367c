import QtQuick
import Kelvo

// What a section is for, in quiet words.
Words {
    color: Theme.secondary
}

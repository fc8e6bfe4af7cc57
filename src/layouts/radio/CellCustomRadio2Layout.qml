import Orvel.Radio

// One favourite radio.
RadioRow {
    required property CellCustomRadio2 cell

    radio: cell
}

" Vim indent file
" Language: FED (Federation Execution Data) of HLA 1.3

if exists('b:did_indent')
  finish
endif
let b:did_indent = 1

setlocal indentexpr=fed#Indent(v:lnum) indentkeys=0),!^F,o,O nolisp autoindent
let b:undo_indent = 'setlocal indentexpr< indentkeys< lisp< autoindent<'

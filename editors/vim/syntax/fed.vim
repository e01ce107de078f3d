" Vim syntax file
" Language: FED (Federation Execution Data) of HLA 1.3
"
" A clause is read word by word: a region begins at one word, contains the region of the next word, and ends before the
" next parenthesis. So no word is reserved, a clause may be split over lines, and a missing parenthesis never affects the
" colours of later clauses.

if exists('b:current_syntax')
  finish
endif
let s:save_cpo = &cpo
set cpo&vim

syntax case ignore
syntax match fedComment /;.*/ contains=fedTodo,@Spell
syntax keyword fedTodo contained TODO FIXME XXX
syntax match fedParen /)/
syntax region fedClause matchgroup=fedParen start=/(/ end=/\ze[()]/ contains=fedComment,@fedHead

" A word begins with a character other than a blank, parenthesis or comment; s:end follows a word.
let s:word = '\%("[^"]*"\=\|[^[:space:]();"]\+\)'
let s:end = '[^[:space:]()"\;]\@!'

" A word at this place: its region, the group of the word, its pattern, the regions that may follow. Of the regions that
" match at the same place, Vim takes the one defined last.
function! s:define(region, group, pattern, next) abort
  execute 'syntax region' a:region 'contained matchgroup=' . a:group 'start=/' . a:pattern . '/ end=/\ze[()]/'
        \ 'contains=' . join(['fedComment'] + a:next, ',')
endfunction

call s:define('fedAfterUnknown', 'fedWord', s:word, [])
syntax cluster fedHead add=fedAfterUnknown
for [s:words, s:next] in [
      \ ['fed\|spaces\|objects\|interactions', []],
      \ ['class', ['fedAfterClass']],
      \ ['attribute', ['fedAfterAttribute']],
      \ ['parameter', ['fedAfterParameter']],
      \ ['space\|dimension', ['fedAfterSpace']],
      \ ['federate', ['fedAfterFederate']],
      \ ['federation\|fedversion\|sec_level', ['fedAfterLabel']]]
  let s:region = 'fedIn' . substitute(s:words, '\W.*', '', '')
  call s:define(s:region, 'fedKeyword', '\%(' . s:words . '\)' . s:end, s:next)
  execute 'syntax cluster fedHead add=' . s:region
endfor

call s:define('fedAfterClass', 'fedClass', s:word, ['fedAfterOther', 'fedAfterTransportation'])
call s:define('fedAfterAttribute', 'fedMember', s:word, ['fedAfterOther', 'fedAfterTransportation'])
call s:define('fedAfterParameter', 'fedMember', s:word, [])
call s:define('fedAfterSpace', 'fedSpace', s:word, [])
call s:define('fedAfterFederate', 'fedLabel', s:word, ['fedAfterLabel'])
call s:define('fedAfterLabel', 'fedLabel', s:word, [])
call s:define('fedAfterOther', 'fedWord', s:word, ['fedAfterOtherOrdering', 'fedAfterOrdering'])
call s:define('fedAfterTransportation', 'fedTransportation',
      \ '"\=\%(reliable\|best_effort\|RTI_RELIABLE\|RTI_BEST_EFFORT\)"\=' . s:end, ['fedAfterOtherOrdering', 'fedAfterOrdering'])
call s:define('fedAfterOtherOrdering', 'fedWord', s:word, ['fedAfterSpace'])
call s:define('fedAfterOrdering', 'fedOrdering',
      \ '"\=\%(timestamp\|receive\|RTI_TIME_STAMP_ORDERING\|RTI_RECEIVE_ORDERING\)"\=' . s:end, ['fedAfterSpace'])

" Comments and quoted names end with their line, so nothing is open before a line that begins with a parenthesis.
syntax sync match fedSync grouphere NONE /^\s*\ze(/

highlight default link fedComment Comment
highlight default link fedTodo Todo
highlight default link fedParen Delimiter
highlight default link fedKeyword Keyword
highlight default link fedClass Type
highlight default link fedMember Identifier
highlight default link fedSpace Function
highlight default link fedLabel String
highlight default link fedTransportation Constant
highlight default link fedOrdering StorageClass

let b:current_syntax = 'fed'
delfunction s:define
let &cpo = s:save_cpo
unlet s:save_cpo s:word s:end s:words s:next s:region
